#pragma once

#include <cstdint>
#include <string>

namespace orvane::bench {

// Short formulas; every tenth uses the name above it.
inline std::string SheetOfFormulas(std::int64_t lines) {
    std::string sheet;
    std::string above;
    for (std::int64_t line = 0; line < lines; ++line) {
        const std::string number = std::to_string(line);
        sheet.append("v").append(number).append(" = ");
        if (line % 10 == 9) {
            sheet.append("v").append(above).append(" * 2 + ").append(number).append(";\n");
        } else {
            sheet.append(number).append(" * 3 + 1;\n");
        }
        above = number;
    }
    return sheet;
}

}  // namespace orvane::bench
