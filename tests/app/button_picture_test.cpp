#include "app/button_picture.h"

#include <gtest/gtest.h>

#include <string>

namespace orvane {
namespace {

void Append(std::string& bytes, std::uint32_t number, int count) {
    for (int byte = 0; byte < count; ++byte) bytes += static_cast<char>(number >> (8 * byte));
}

struct Picture {
    std::uint32_t headerBytes = 40;
    std::int32_t width = 3;
    std::int32_t height = 2;
    std::uint16_t bitCount = 24;
    std::uint32_t compression = 0;
    std::uint32_t imageBytes = 0;
    std::uint32_t usedColours = 0;
    std::size_t bytesBehindHeader = 24;  // two rows of 9 bytes, rounded up to 12

    std::string File() const {
        std::string bytes = "BM";
        bytes.append(12, '\0');
        Append(bytes, headerBytes, 4);
        Append(bytes, static_cast<std::uint32_t>(width), 4);
        Append(bytes, static_cast<std::uint32_t>(height), 4);
        Append(bytes, 1, 2);
        Append(bytes, bitCount, 2);
        Append(bytes, compression, 4);
        Append(bytes, imageBytes, 4);
        Append(bytes, 2835, 4);
        Append(bytes, 2835, 4);
        Append(bytes, usedColours, 4);
        Append(bytes, 0, 4);
        bytes.append(bytesBehindHeader, 'x');
        return bytes;
    }
};

TEST(ButtonPicture, KeepsEverythingBehindTheFileHeader) {
    const std::string file = Picture().File();
    const auto picture = ReadButtonPicture(file);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->block, file.substr(14));
    EXPECT_EQ(picture->width, 3);
    EXPECT_EQ(picture->height, 2);
    EXPECT_EQ(picture->bitCount, 24);
}

struct ColourRow {
    std::uint16_t bitCount;
    std::uint32_t used;
    std::size_t entries;
};
constexpr ColourRow colourRows[] = {{1, 0, 2},  {2, 0, 4},  {4, 5, 16}, {8, 0, 256},
                                    {16, 9, 0}, {24, 9, 0}, {32, 9, 0}, {5, 9, 9}};

TEST(ButtonPicture, TakesTheColourTableFromTheBitCount) {
    for (const auto& [bitCount, used, entries] : colourRows) {
        SCOPED_TRACE(bitCount);
        Picture made;
        made.bitCount = bitCount;
        made.usedColours = used;
        made.bytesBehindHeader = 2000;
        const auto picture = ReadButtonPicture(made.File());
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->colourCount, entries);
    }
}

TEST(ButtonPicture, ComputesTheSizeOfUncompressedRowsRoundedUpToFourBytes) {
    const auto picture = ReadButtonPicture(Picture().File());
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->imageBytes, 24U);
    Picture fromTheTop;
    fromTheTop.height = -2;
    EXPECT_EQ(ReadButtonPicture(fromTheTop.File())->imageBytes, 24U);
}

TEST(ButtonPicture, TakesUncompressedRowsWhateverSizeTheyState) {
    for (const std::uint32_t stated : {1u, 24u, 26u, 4'000'000'000u}) {
        SCOPED_TRACE(stated);
        Picture made;
        made.imageBytes = stated;
        const auto picture = ReadButtonPicture(made.File());
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->imageBytes, 24U);
    }
}

TEST(ButtonPicture, RefusesWhatIsNoPicture) {
    EXPECT_FALSE(ReadButtonPicture(""));
    EXPECT_FALSE(ReadButtonPicture("BM"));
    EXPECT_FALSE(ReadButtonPicture("BM123456789012"));
    EXPECT_FALSE(ReadButtonPicture("BM1234567890123"));
    std::string otherMark = Picture().File();
    otherMark[0] = 'b';
    EXPECT_FALSE(ReadButtonPicture(otherMark));

    Picture longHeader;
    longHeader.headerBytes = 108;
    EXPECT_FALSE(ReadButtonPicture(longHeader.File()));
    Picture compressedWithoutSize;
    compressedWithoutSize.compression = 1;
    EXPECT_FALSE(ReadButtonPicture(compressedWithoutSize.File()));
    compressedWithoutSize.imageBytes = 24;
    EXPECT_TRUE(ReadButtonPicture(compressedWithoutSize.File()));
    Picture flat;
    flat.height = 0;
    EXPECT_FALSE(ReadButtonPicture(flat.File()));
    Picture thin;
    thin.width = -3;
    EXPECT_FALSE(ReadButtonPicture(thin.File()));
    Picture huge;
    huge.width = huge.height = 2'000'000'000;
    EXPECT_FALSE(ReadButtonPicture(huge.File()));
}

TEST(ButtonPicture, RefusesAFileThatIsCutAnywhere) {
    const std::string file = Picture().File();
    for (std::size_t size = 0; size < file.size(); ++size) {
        EXPECT_FALSE(ReadButtonPicture(std::string_view(file).substr(0, size))) << size;
    }
}

}  // namespace
}  // namespace orvane
