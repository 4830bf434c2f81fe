#include <gtest/gtest.h>

#include <string>

#include "app/button_picture.h"
#include "app/main_layout.h"
#include "storage/file_bytes.h"

namespace orvane {
namespace {

constexpr const char* bitmapRows[] = {"Base_111up.bmp", "Base_111dn.bmp"};

std::optional<ButtonPicture> ReadShipped(const std::string& name) {
    std::string reason;
    const auto bytes = ReadFile(std::string(ORVANE_BITMAPS_FOLDER) + "/" + name, reason);
    EXPECT_TRUE(bytes) << reason;
    return bytes ? ReadButtonPicture(*bytes) : std::nullopt;
}

TEST(ShippedBitmaps, AreReadAndFillAButton) {
    const std::int64_t rowBytes = 336;  // 111 pixels of 3 bytes, rounded up to 4
    for (const char* name : bitmapRows) {
        SCOPED_TRACE(name);
        const auto picture = ReadShipped(name);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->width, 111);
        EXPECT_EQ(picture->height, 28);
        EXPECT_EQ(picture->bitCount, 24);
        EXPECT_EQ(picture->compression, 0u);
        EXPECT_EQ(picture->imageBytes, rowBytes * 28);
    }
}

// A bitmap is opaque, so the corners that a button leaves free show the window.
TEST(ShippedBitmaps, HaveTheWindowColourInTheirCorners) {
    const std::string window = "\xDF\xDF\xBF";
    for (const char* name : bitmapRows) {
        SCOPED_TRACE(name);
        const auto picture = ReadShipped(name);
        ASSERT_TRUE(picture);
        const std::string rows = picture->block.substr(40);
        const std::size_t lastRow = 336 * 27;
        for (const std::size_t at : {std::size_t{0}, std::size_t{330}, lastRow, lastRow + 330}) {
            EXPECT_EQ(rows.substr(at, 3), window) << "at byte " << at;
        }
    }
}

TEST(ShippedBitmaps, TellAPressedButtonFromARestingOne) {
    const auto up = ReadShipped("Base_111up.bmp");
    const auto down = ReadShipped("Base_111dn.bmp");
    ASSERT_TRUE(up && down);
    const auto brightness = [](const ButtonPicture& picture) {
        std::int64_t sum = 0;
        for (const char byte : picture.block.substr(40)) sum += static_cast<unsigned char>(byte);
        return sum / (336 * 28);
    };
    EXPECT_GT(brightness(*up), brightness(*down) + 20);
}

}  // namespace
}  // namespace orvane
