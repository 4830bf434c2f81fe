#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The pictures of the painted buttons: bitmap files of the device-independent kind, read once at
// the start.

namespace orvane {

// What a bitmap file tells of itself.
struct ButtonPicture {
    // The file from behind its 14-byte header: the header block, the colour table, the rows.
    std::string block;
    std::int32_t width = 0;
    std::int32_t height = 0;  // negative: rows run from the top down
    std::uint16_t bitCount = 0;
    std::uint32_t compression = 0;
    std::uint32_t imageBytes = 0;
    std::size_t colourCount = 0;  // entries of 4 bytes behind the header block
};

// Nothing where the bytes are no such file: they begin with "BM" and go on behind their header, the
// header block is 40 bytes long, the rows are as long as the size says, and a compressed picture
// gives its size itself.
std::optional<ButtonPicture> ReadButtonPicture(std::string_view fileBytes);

}  // namespace orvane
