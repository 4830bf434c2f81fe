#include "app/button_picture.h"

namespace orvane {

namespace {

constexpr std::size_t fileHeaderBytes = 14;
constexpr std::uint32_t blockHeaderBytes = 40;
constexpr std::uint32_t uncompressed = 0;

// Little-endian, as the file holds them.
std::uint32_t NumberAt(std::string_view bytes, std::size_t at, int count) {
    std::uint32_t number = 0;
    for (int byte = count - 1; byte >= 0; --byte) {
        number = number << 8 | static_cast<unsigned char>(bytes[at + byte]);
    }
    return number;
}

// Entries of the colour table behind the header block.
std::size_t ColourCount(std::uint16_t bitCount, std::uint32_t usedColours) {
    switch (bitCount) {
        case 1:
        case 2:
        case 4:
        case 8:
            return std::size_t{1} << bitCount;
        case 16:
        case 24:
        case 32:
            return 0;
        default:
            return usedColours;
    }
}

// Rows are rounded up to 4 bytes.
std::uint64_t UncompressedBytes(const ButtonPicture& picture) {
    const std::int64_t width = picture.width;
    const std::int64_t height = picture.height;
    const std::uint64_t rows = static_cast<std::uint64_t>(height < 0 ? -height : height);
    const std::uint64_t rowBits = static_cast<std::uint64_t>(width) * picture.bitCount;
    return (rowBits + 31) / 32 * 4 * rows;
}

}  // namespace

std::optional<ButtonPicture> ReadButtonPicture(std::string_view fileBytes) {
    if (fileBytes.size() <= fileHeaderBytes || !fileBytes.starts_with("BM")) return std::nullopt;
    const std::string_view block = fileBytes.substr(fileHeaderBytes);
    if (block.size() < blockHeaderBytes || NumberAt(block, 0, 4) != blockHeaderBytes) {
        return std::nullopt;
    }
    ButtonPicture picture;
    picture.width = static_cast<std::int32_t>(NumberAt(block, 4, 4));
    picture.height = static_cast<std::int32_t>(NumberAt(block, 8, 4));
    picture.bitCount = static_cast<std::uint16_t>(NumberAt(block, 14, 2));
    picture.compression = NumberAt(block, 16, 4);
    picture.imageBytes = NumberAt(block, 20, 4);
    picture.colourCount = ColourCount(picture.bitCount, NumberAt(block, 32, 4));
    if (picture.width <= 0 || picture.height == 0) return std::nullopt;

    std::uint64_t bytes = picture.imageBytes;
    if (bytes == 0 && picture.compression != uncompressed) return std::nullopt;
    const std::uint64_t needed = UncompressedBytes(picture);
    // Kept: what the file states of uncompressed rows is not looked at; some writers count more
    // bytes than there are.
    if (picture.compression == uncompressed) bytes = needed;
    if (blockHeaderBytes + std::uint64_t{picture.colourCount} * 4 + bytes > block.size()) {
        return std::nullopt;
    }
    picture.imageBytes = static_cast<std::uint32_t>(bytes);
    picture.block = block;
    return picture;
}

}  // namespace orvane
