#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "functions/keyword_texts.h"

// The rows of the All keywords list: every signature of every keyword, column by column, and how a
// click on a column's header sorts them.

namespace orvane {

inline constexpr std::size_t keywordColumnCount = 6;
// The brackets around the parameters have columns of their own, with a blank for a header.
inline constexpr std::array<std::string_view, keywordColumnCount> keywordColumnHeaders = {
    "return / <type>", "function / header / constant", " ",
    "main parameters", "optional parameters",          " "};
inline constexpr std::size_t keywordNameColumn = 1;

class KeywordListRows {
public:
    // Every row of the keyword table, in byte order of the names.
    KeywordListRows();
    // The rows of these entries, which must outlive the list.
    explicit KeywordListRows(std::span<const KeywordEntry* const> entries);

    std::size_t Size() const { return rows.size(); }
    // Row and column must exist. The view holds until the next sorting.
    std::string_view Text(std::size_t row, std::size_t column) const;

    // A click on the header of this column: sorts by its texts in byte order, equal ones staying in
    // the order in which they are. Kept: the direction turns with every click, whichever column it
    // is on. The first click sorts from high to low, the second from low to high. Answers which row
    // each of the rows was before.
    std::vector<std::size_t> SortBy(std::size_t column);

    // The row under the pointer, or none where no row is. `pointerY` counts from the top of the
    // list's column headers, `topRow` is the uppermost row in view; heights in pixels.
    std::optional<std::size_t> RowAt(int pointerY, int headerHeight, int rowHeight,
                                     int topRow) const;
    // The help page of the row's keyword; none for a name that is no keyword.
    std::optional<std::string> TopicOfRow(std::size_t row) const;

private:
    struct Row {
        KeywordLine line;
        std::size_t comparedRow;  // sorting reads the text of this row in place of the own one
    };

    void Append(const KeywordEntry& entry);

    std::vector<Row> rows;
    bool ascending = false;
};

}  // namespace orvane
