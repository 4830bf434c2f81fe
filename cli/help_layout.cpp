#include "cli/help_layout.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane::cli {

namespace {

constexpr int listIndent = 2;
constexpr int blockIndent = 4;
constexpr int columnGap = 2;
constexpr int leastColumn = 10;

using Lines = std::vector<std::string>;

bool IsBlank(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

// Characters, of which UTF-8 makes up to four bytes.
int WidthOf(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
}

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool IsBlock(const pugi::xml_node& node) {
    return IsOneOf(node.name(), {"p", "h1", "h2", "h3", "pre", "ul", "ol", "li", "table", "hr"});
}

// Pages set formulas and messages apart by their font. Without one, those of several words stand in
// marks.
std::string_view MarkAround(const pugi::xml_node& node) {
    if (std::string_view(node.name()) != "code") return "";
    return std::string_view(node.text().get()).find(' ') != std::string_view::npos ? "`" : "";
}

// All text below the nodes from `first` to the one ahead of `end`, which are neighbours.
std::string TextBetween(pugi::xml_node first, const pugi::xml_node& end) {
    std::string text;
    for (; first != end; first = first.next_sibling()) {
        for (pugi::xml_node node = first; node;) {
            text.append(MarkAround(node)).append(node.value());
            if (node.first_child()) {
                node = node.first_child();
                continue;
            }
            while (node != first && !node.next_sibling()) {
                text += MarkAround(node);
                node = node.parent();
            }
            text += MarkAround(node);
            node = node == first ? pugi::xml_node() : node.next_sibling();
        }
    }
    return text;
}

std::vector<std::string_view> WordsIn(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t at = 0; at < text.size();) {
        if (IsBlank(text[at])) {
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && !IsBlank(text[end])) ++end;
        words.push_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

Lines Wrap(std::string_view text, int columns) {
    Lines lines;
    int width = 0;
    for (const std::string_view word : WordsIn(text)) {
        const int wordWidth = WidthOf(word);
        if (lines.empty() || width + 1 + wordWidth > columns) {
            lines.emplace_back(word);
            width = wordWidth;
        } else {
            lines.back().append(1, ' ').append(word);
            width += 1 + wordWidth;
        }
    }
    return lines;
}

// Blank lines at the beginning belong to the text, as in a report that begins with one.
Lines FixedLines(std::string_view text) {
    if (text.starts_with('\n')) text.remove_prefix(1);
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        while (!line.empty() && IsBlank(line.back())) line.remove_suffix(1);
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

// Makes the widest columns narrower until all fit.
void FitColumns(std::vector<int>& widths, int columns) {
    const auto sum = [&widths] {
        int all = -columnGap;
        for (const int width : widths) all += width + columnGap;
        return all;
    };
    while (sum() > columns) {
        const auto widest = std::max_element(widths.begin(), widths.end());
        if (*widest <= leastColumn) return;
        --*widest;
    }
}

using Row = std::vector<std::string>;

Lines LayOutTable(const std::vector<Row>& rows, int columns) {
    std::vector<int> widths;
    for (const Row& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t cell = 0; cell < row.size(); ++cell) {
            widths[cell] = std::max(widths[cell], WidthOf(row[cell]));
        }
    }
    FitColumns(widths, columns);
    Lines lines;
    for (const Row& row : rows) {
        std::vector<Lines> cells;
        std::size_t height = 0;
        for (std::size_t cell = 0; cell < row.size(); ++cell) {
            cells.push_back(Wrap(row[cell], widths[cell]));
            height = std::max(height, cells.back().size());
        }
        for (std::size_t at = 0; at < height; ++at) {
            std::string line;
            int column = 0;
            for (std::size_t cell = 0; cell < cells.size(); ++cell) {
                const std::string text = at < cells[cell].size() ? cells[cell][at] : "";
                if (!text.empty()) {
                    line.append(static_cast<std::size_t>(std::max(0, column - WidthOf(line))), ' ');
                    line += text;
                }
                column += widths[cell] + columnGap;
            }
            lines.push_back(line);
        }
    }
    return lines;
}

class BlockPrinter {
public:
    explicit BlockPrinter(int columns) : columns(columns) {}

    std::string Print(pugi::xml_node first, const pugi::xml_node& end) {
        Push(first, end, 0);
        while (!open.empty()) {
            const Opened block = open.back();
            open.pop_back();
            PrintBlock(block.node, block.indent);
        }
        return std::move(text);
    }

private:
    struct Opened {
        pugi::xml_node node;
        int indent;
    };

    // The last one pushed is printed first.
    void Push(pugi::xml_node first, const pugi::xml_node& end, int indent) {
        const auto from = static_cast<std::ptrdiff_t>(open.size());
        for (; first != end; first = first.next_sibling()) {
            if (first.type() == pugi::node_element) open.push_back({first, indent});
        }
        std::reverse(open.begin() + from, open.end());
    }

    void PrintBlock(const pugi::xml_node& node, int indent) {
        const std::string_view name = node.name();
        if (IsOneOf(name, {"ul", "ol"})) {
            Push(node.first_child(), {}, indent + listIndent);
        } else if (name == "li") {
            PrintItem(node, indent);
        } else if (name == "pre") {
            PrintFixed(node, indent);
        } else if (name == "table") {
            PrintTable(node, indent);
        } else if (IsOneOf(name, {"h1", "h2", "h3"})) {
            PrintHeading(WordsOf(node), name);
        } else if (name == "p" && std::string_view(node.attribute("class").value()) != "path") {
            Add(Wrap(WordsOf(node), columns - indent), indent);
        }
    }

    void PrintHeading(const std::string& words, std::string_view name) {
        Lines lines = {words};
        const char mark = name == "h1" ? '=' : '-';
        if (name != "h3") lines.emplace_back(static_cast<std::size_t>(WidthOf(words)), mark);
        Add(lines, 0);
    }

    // Items stand close together; those of a numbered list keep their numbers.
    void PrintItem(const pugi::xml_node& item, int indent) {
        pugi::xml_node block = item.first_child();
        while (block && !IsBlock(block)) block = block.next_sibling();
        const std::string mark = MarkOf(item);
        const int width = static_cast<int>(mark.size());
        Lines lines = Wrap(TextBetween(item.first_child(), block), columns - indent - width);
        if (lines.empty()) lines.emplace_back();
        for (std::string& line : lines) {
            line.insert(0, &line == &lines.front() ? mark : std::string(mark.size(), ' '));
        }
        Add(lines, indent, !item.previous_sibling("li"));
        if (block) Push(block, {}, indent + width);
    }

    static std::string MarkOf(const pugi::xml_node& item) {
        if (std::string_view(item.parent().name()) != "ol") return "- ";
        int number = 1;
        for (pugi::xml_node ahead = item.previous_sibling("li"); ahead;
             ahead = ahead.previous_sibling("li")) {
            ++number;
        }
        return std::to_string(number) + ". ";
    }

    void PrintFixed(const pugi::xml_node& block, int indent) {
        const std::string_view kind = block.attribute("class").value();
        const std::string options = block.attribute("data-options").value();
        if (kind == "sheet") {
            Add({options.empty() ? "Sheet:" : "Sheet, with " + options + ":"}, indent);
            needsGap = false;
        } else if (kind == "report") {
            Add({"Report:"}, indent);
            needsGap = false;
        }
        Add(FixedLines(TextBetween(block.first_child(), {})), indent + blockIndent, needsGap);
    }

    void PrintTable(const pugi::xml_node& table, int indent) {
        std::vector<Row> rows;
        for (const pugi::xpath_node& found : table.select_nodes(".//tr")) {
            Row row;
            for (const pugi::xml_node& cell : found.node().children()) {
                if (cell.type() == pugi::node_element) row.push_back(WordsOf(cell));
            }
            rows.push_back(std::move(row));
        }
        Add(LayOutTable(rows, columns - indent - listIndent), indent + listIndent);
    }

    // With a blank line in front, but not at the beginning.
    void Add(const Lines& lines, int indent, bool gap = true) {
        if (lines.empty()) return;
        if (gap && !text.empty()) text += '\n';
        for (const std::string& line : lines) {
            if (!line.empty()) text.append(static_cast<std::size_t>(indent), ' ').append(line);
            text += '\n';
        }
        needsGap = true;
    }

    const int columns;
    std::vector<Opened> open;
    bool needsGap = false;  // between what was printed and the lines to come
    std::string text;
};

}  // namespace

std::string LayOutBlocks(pugi::xml_node first, pugi::xml_node end, int columns) {
    return BlockPrinter(columns).Print(first, end);
}

std::string WordsOf(const pugi::xml_node& element) {
    std::string words;
    const std::string text = TextBetween(element.first_child(), {});
    for (const std::string_view word : WordsIn(text)) {
        if (!words.empty()) words += ' ';
        words += word;
    }
    return words;
}

}  // namespace orvane::cli
