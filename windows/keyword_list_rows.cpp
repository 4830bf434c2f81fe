#include "windows/keyword_list_rows.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "windows/help_topics.h"

namespace orvane {

KeywordListRows::KeywordListRows() : KeywordListRows(keywordTable.Sorted()) {}

KeywordListRows::KeywordListRows(std::span<const KeywordEntry* const> entries) {
    for (const KeywordEntry* entry : entries) Append(*entry);
}

void KeywordListRows::Append(const KeywordEntry& entry) {
    for (KeywordLine& line : LinesOf(entry)) {
        // Kept: until the first sorting is over a header counts as if it held the texts of row 0,
        // so that all headers come to stand together with that row.
        const std::size_t compared = entry.group == KeywordGroup::header ? 0 : rows.size();
        rows.push_back({std::move(line), compared});
    }
}

std::string_view KeywordListRows::Text(std::size_t row, std::size_t column) const {
    const KeywordLine& line = rows[row].line;
    const std::array<std::string_view, keywordColumnCount> texts = {line.returnText,
                                                                    line.name,
                                                                    line.opening,
                                                                    line.signature.mainParams,
                                                                    line.signature.optionalParams,
                                                                    line.closing};
    return texts[column];
}

std::vector<std::size_t> KeywordListRows::SortBy(std::size_t column) {
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        const std::string_view leftText = Text(rows[left].comparedRow, column);
        const std::string_view rightText = Text(rows[right].comparedRow, column);
        return ascending ? leftText < rightText : leftText > rightText;
    });

    std::vector<Row> sorted;
    sorted.reserve(rows.size());
    for (const std::size_t row : order) {
        sorted.push_back({std::move(rows[row].line), sorted.size()});
    }
    rows = std::move(sorted);
    ascending = !ascending;
    return order;
}

std::optional<std::size_t> KeywordListRows::RowAt(int pointerY, int headerHeight, int rowHeight,
                                                  int topRow) const {
    if (rowHeight <= 0) return std::nullopt;
    const int row = (pointerY - headerHeight) / rowHeight + topRow;
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) return std::nullopt;
    return static_cast<std::size_t>(row);
}

std::optional<std::string> KeywordListRows::TopicOfRow(std::size_t row) const {
    const KeywordEntry* entry = keywordTable.Find(Text(row, keywordNameColumn));
    if (entry == nullptr) return std::nullopt;
    return TopicForKeyword(*entry);
}

}  // namespace orvane
