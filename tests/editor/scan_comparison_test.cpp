#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "editor/line_scanner.h"
#include "editor/view_geometry.h"
#include "functions/keyword_table.h"
#include "tests/editor/line_cells.h"

namespace orvane {
namespace {

// Random lines, scanned and scanned plainly: character by character, from lists of characters.

using Pieces = std::vector<ColouredPiece>;

const std::string letters = "_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::string digits = "0123456789";
const std::string symbolRun = "^><=,.+-*%{[()]}|;:";

bool IsOneOf(char c, const std::string& set) { return set.find(c) != std::string::npos; }

bool HasRow(const std::string& word, bool wantHeader) {
    return std::any_of(keywordRows.begin(), keywordRows.end(), [&](const KeywordEntry& row) {
        return word == row.name && (row.group == KeywordGroup::header) == wantHeader;
    });
}

struct PlainScan {
    std::string line;
    std::size_t at = 0;
    Pieces pieces = {};

    bool IsPresent(std::size_t ahead) const { return at + ahead < line.size(); }
    char Peek(std::size_t ahead = 0) const { return line.at(at + ahead); }

    void Add(TextClass textClass, std::size_t length) {
        pieces.push_back({textClass, static_cast<std::int32_t>(at),
                          static_cast<std::int32_t>(length), test::CellsOf(line)[at]});
        at += length;
    }

    std::size_t CountOf(const std::string& set) const {
        std::size_t length = 0;
        while (IsPresent(length) && IsOneOf(Peek(length), set)) ++length;
        return length;
    }

    void AddString() {
        std::size_t length = 1;
        while (IsPresent(length) && Peek(length) != '"') ++length;
        Add(TextClass::string, IsPresent(length) ? length + 1 : length);
    }

    void AddWord() {
        const std::size_t length = CountOf(letters + digits);
        const std::string word = line.substr(at, length);
        std::string behind = line.substr(at + length);
        std::erase(behind, ' ');
        std::erase(behind, '\t');
        const bool isHeader = HasRow(word, true) && !behind.empty() && behind[0] == ':';
        const TextClass plain = isHeader ? TextClass::headerKeyword : TextClass::normalText;
        Add(HasRow(word, false) ? TextClass::commonKeyword : plain, length);
    }

    void Step() {
        const char c = Peek();
        if (c == ' ' || c == '\t') {
            ++at;
        } else if (c == '/' && IsPresent(1) && Peek(1) == '/') {
            Add(TextClass::comment, line.size() - at);
        } else if (c == '/') {
            Add(TextClass::symbol, 1);
        } else if (c == '"') {
            AddString();
        } else if (IsOneOf(c, letters)) {
            AddWord();
        } else if (IsOneOf(c, digits)) {
            Add(TextClass::number, CountOf(letters + digits + "."));
        } else if (IsOneOf(c, symbolRun)) {
            Add(TextClass::symbol, CountOf(symbolRun));
        } else {
            Add(TextClass::normalText, 1);
        }
    }
};

Pieces ScanPlainly(const std::string& line) {
    PlainScan scan{line};
    while (scan.at < line.size()) scan.Step();
    return scan.pieces;
}

std::string RandomLine(std::mt19937& random) {
    static const std::vector<std::string> parts = {
        "\"",  "\"",   "/", "/",   "//",   "\t", " ",  ":",    "hex",  "hex:", "define",
        "pi",  "e",    "E", "sin", "sinh", "_",  ".",  "1",    "0h",   "9.9",  "a",
        "Hex", "=",    "+", "(",   ")",    "!",  "'",  "\xE9", "\x80", "\xFF", "\x01",
        "\n",  "text", ";", "q",   "{",    "|",  "\\", "#",    "@"};
    std::string line;
    for (std::size_t count = random() % 14; count > 0; --count) {
        if (random() % 8 == 0) {
            line += static_cast<char>(random() % 256);
        } else {
            line += parts[random() % parts.size()];
        }
    }
    return line;
}

TEST(ScanLine, AgreesWithAPlainScan) {
    std::mt19937 random(422);
    Pieces pieces;
    for (int round = 0; round < 150000; ++round) {
        const std::string line = RandomLine(random);
        ScanLine(line, LanguageWords(), pieces);
        ASSERT_EQ(pieces, ScanPlainly(line)) << testing::PrintToString(line);
    }
}

TEST(ScanLine, CoversEveryCharacterButBlanksAndTabsOnce) {
    std::mt19937 random(423);
    Pieces pieces;
    for (int round = 0; round < 30000; ++round) {
        const std::string line = RandomLine(random);
        SCOPED_TRACE(testing::PrintToString(line));
        ScanLine(line, LanguageWords(), pieces);
        std::size_t at = 0;
        for (const ColouredPiece& piece : pieces) {
            const std::size_t start = static_cast<std::size_t>(piece.start);
            ASSERT_GE(start, at);
            ASSERT_EQ(line.substr(at, start - at).find_first_not_of(" \t"), std::string::npos);
            ASSERT_GT(piece.length, 0);
            ASSERT_EQ(piece.cell, VisualCol(line, piece.start));
            at = start + static_cast<std::size_t>(piece.length);
            ASSERT_LE(at, line.size());
            const bool holdsBlanks =
                piece.textClass == TextClass::string || piece.textClass == TextClass::comment;
            if (holdsBlanks) continue;
            ASSERT_EQ(line.substr(start, at - start).find_first_of(" \t"), std::string::npos);
        }
        ASSERT_EQ(line.substr(at).find_first_not_of(" \t"), std::string::npos);
    }
}

TEST(AppendStretches, PutsEveryCharacterButTabsIntoItsCell) {
    std::mt19937 random(424);
    Pieces stretches;
    for (int round = 0; round < 30000; ++round) {
        const std::string line = RandomLine(random);
        SCOPED_TRACE(testing::PrintToString(line));
        const std::vector<std::int32_t> cells = test::CellsOf(line);
        for (const ColouredPiece& piece : ScanLine(line, LanguageWords())) {
            stretches.clear();
            AppendStretches(line, piece, stretches);
            std::vector<std::size_t> drawn;
            for (const ColouredPiece& stretch : stretches) {
                ASSERT_EQ(stretch.textClass, piece.textClass);
                ASSERT_GT(stretch.length, 0);
                for (std::int32_t i = 0; i < stretch.length; ++i) {
                    drawn.push_back(static_cast<std::size_t>(stretch.start + i));
                    ASSERT_EQ(stretch.cell + i, cells[drawn.back()]);
                }
            }
            std::vector<std::size_t> expected;
            for (std::int32_t i = 0; i < piece.length; ++i) {
                const std::size_t col = static_cast<std::size_t>(piece.start + i);
                if (line[col] != '\t') expected.push_back(col);
            }
            ASSERT_EQ(drawn, expected);
        }
    }
}

}  // namespace
}  // namespace orvane
