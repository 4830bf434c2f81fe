#include "app/main_painting.h"

#include <QPainter>

#include "app/button_picture.h"
#include "app/command_rows.h"
#include "app/widget_place.h"
#include "storage/file_bytes.h"
#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr QColor light(255, 255, 255);
constexpr QColor dark(128, 128, 128);

// The toolkit reads whole files, so the picture gets a file header again.
QImage ImageFrom(const ButtonPicture& picture) {
    constexpr std::size_t headerBytes = 14;
    constexpr std::size_t blockHeaderBytes = 40;
    const auto appendNumber = [](std::string& bytes, std::size_t number) {
        for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
    };
    std::string file = "BM";
    appendNumber(file, headerBytes + picture.block.size());
    appendNumber(file, 0);
    appendNumber(file, headerBytes + blockHeaderBytes + picture.colourCount * 4);
    file += picture.block;
    return QImage::fromData(
        QByteArray::fromRawData(file.data(), static_cast<qsizetype>(file.size())), "BMP");
}

QImage LoadImage(const std::string& path) {
    std::string reason;
    const std::optional<std::string> bytes = ReadFile(path, reason);
    if (!bytes) return {};
    const std::optional<ButtonPicture> picture = ReadButtonPicture(*bytes);
    return picture ? ImageFrom(*picture) : QImage();
}

void PaintPlainButton(QPainter& painter, const QRect& rect, bool isDown) {
    painter.fillRect(rect, isDown ? windowColour.darker(108) : windowColour.lighter(106));
    painter.setPen(isDown ? dark : light);
    painter.drawLine(rect.topLeft(), rect.topRight());
    painter.drawLine(rect.topLeft(), rect.bottomLeft());
    painter.setPen(isDown ? light : dark);
    painter.drawLine(rect.bottomLeft(), rect.bottomRight());
    painter.drawLine(rect.topRight(), rect.bottomRight());
}

void PaintButton(QPainter& painter, const QRect& rect, const QImage& image, bool isDown,
                 const char* text) {
    if (image.isNull()) {
        PaintPlainButton(painter, rect, isDown);
    } else {
        painter.drawImage(rect.topLeft(), image);
    }
    painter.setPen(Qt::black);
    const QRect textRect = isDown ? rect.translated(1, 1) : rect;
    painter.drawText(textRect, Qt::AlignCenter | Qt::TextSingleLine, QLatin1String(text));
}

}  // namespace

ButtonImages LoadButtonImages(const std::string& folder) {
    return {LoadImage(folder + "/Base_111up.bmp"), LoadImage(folder + "/Base_111dn.bmp")};
}

void PaintGrooves(QPainter& painter, const MainLayout& layout) {
    if (layout.grooveRight < layout.grooveLeft) return;
    for (const int top : {layout.editorGrooveTop, layout.resultGrooveTop}) {
        for (const GrooveLine& line : grooveLines) {
            painter.setPen(line.isLight ? light : dark);
            const int y = top + line.offset;
            painter.drawLine(layout.grooveLeft, y, layout.grooveRight, y);
        }
    }
}

void PaintMenuStrip(QPainter& painter, const MenuStrip& strip) {
    for (int label = 0; label < menuLabelCount; ++label) {
        const QRect rect = QRectFrom(strip.LabelRect(label));
        painter.setPen(Qt::black);
        painter.drawText(rect, Qt::AlignCenter | Qt::TextSingleLine,
                         QStringFrom(PopupTitle(label)));
        if (strip.Hovered() == label) PaintThinFrame(painter, rect);
    }
}

void PaintButtons(QPainter& painter, const MainLayout& layout, const ButtonImages& images,
                  std::optional<MainButton> pressed, const QRect& area) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int button = 0; button < mainButtonCount; ++button) {
        const QRect rect = QRectFrom(layout.buttons[button]);
        if (!area.intersects(rect.adjusted(0, 0, 1, 1))) continue;
        const bool isDown = pressed == static_cast<MainButton>(button);
        PaintButton(painter, rect, isDown ? images.down : images.up, isDown,
                    mainButtonTexts[button]);
    }
}

}  // namespace orvane
