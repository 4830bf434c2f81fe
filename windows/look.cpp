#include "windows/look.h"

#include <qdrawutil.h>
#include <QApplication>
#include <QFontDatabase>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

// The pictures stand in a library of which the linker leaves out what nobody names. The macro
// declares a function and must stand outside every namespace.
static void InitResources() { Q_INIT_RESOURCE(orvane); }

namespace orvane {

namespace {

constexpr int interfacePixels = 11;
constexpr int fixedPixels = 13;

// How far a group box's title stands from its left edge, and from its frame at both ends.
constexpr int groupTitleLeft = 9;
constexpr int groupTitleGap = 2;

// The frame of a group box runs through the middle of its title: what the box holds was placed for
// a frame as high as that.
void PaintGroupBox(const QStyleOptionGroupBox& box, QPainter& painter) {
    const int titleHeight = box.fontMetrics.height();
    const QRect title(box.rect.left() + groupTitleLeft, box.rect.top(),
                      box.fontMetrics.horizontalAdvance(box.text), titleHeight);
    painter.save();
    if (!box.text.isEmpty()) {
        const QRegion gap(title.adjusted(-groupTitleGap, 0, groupTitleGap, 0));
        painter.setClipRegion(QRegion(box.rect) - gap);
    }
    qDrawShadeRect(&painter, box.rect.adjusted(0, titleHeight / 2, 0, 0), box.palette, true);
    painter.setClipping(false);
    painter.setPen(box.palette.color(QPalette::WindowText));
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, box.text);
    painter.restore();
}

// The platform-independent style with smaller check boxes: their texts stand in rectangles that
// were measured for them.
class SlimStyle : public QProxyStyle {
public:
    SlimStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override {
        switch (metric) {
            case PM_IndicatorWidth:
            case PM_IndicatorHeight:
                return 12;
            case PM_CheckBoxLabelSpacing:
                return 3;
            case PM_SmallIconSize:
                return 16;
            default:
                return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override {
        const auto* box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        if (control == CC_GroupBox && box != nullptr &&
            !box->subControls.testFlag(SC_GroupBoxCheckBox)) {
            PaintGroupBox(*box, *painter);
        } else {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
        }
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        // Buttons show words alone under every desktop, and menus stay where they are put.
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
        if (hint == SH_EtchDisabledText) return 0;
        // A list drops down below its box, as many rows as it was made for, and covers nothing
        // else.
        if (hint == SH_ComboBox_Popup) return 0;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

QPalette WindowPalette() {
    QPalette palette(windowColour);
    palette.setColor(QPalette::Window, windowColour);
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(240, 247, 247));
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Button, QColor(206, 231, 231));
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 239));
    palette.setColor(QPalette::ToolTipText, Qt::black);
    palette.setColor(QPalette::PlaceholderText, QColor(128, 128, 128));
    palette.setColor(QPalette::Highlight, QColor(0, 96, 128));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0, 0, 192));
    palette.setColor(QPalette::LinkVisited, QColor(96, 0, 128));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(112, 128, 128));
    }
    return palette;
}

}  // namespace

void PrepareLook() {
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    QApplication::setDesktopSettingsAware(false);
}

void ApplyLook(QApplication& application) {
    InitResources();
    QApplication::setStyle(new SlimStyle);  // the application owns it
    QApplication::setPalette(WindowPalette());
    QApplication::setFont(InterfaceFont());
    application.setEffectEnabled(Qt::UI_AnimateMenu, false);
    application.setEffectEnabled(Qt::UI_AnimateCombo, false);
}

QIcon ProgramIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        icon.addFile(QStringLiteral(":/icon/orvane_%1.png").arg(size));
    }
    icon.addFile(QStringLiteral(":/icon/orvane.png"));
    return icon;
}

QFont InterfaceFont() {
    QFont font;
    font.setFamilies({"Liberation Sans", "Arial", "Helvetica"});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(interfacePixels);
    return font;
}

QFont FixedFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    font.setKerning(false);
    font.setPixelSize(fixedPixels);
    font.setHintingPreference(QFont::PreferFullHinting);
    // Texts are placed by counting cells, so a character is a whole number of pixels wide.
    const QString digits = QStringLiteral("1234567890");
    const qreal advance =
        QFontMetricsF(font).horizontalAdvance(digits) / static_cast<qreal>(digits.size());
    font.setLetterSpacing(QFont::AbsoluteSpacing, qRound(advance) - advance);
    return font;
}

QColor ColourOf(Colour colour) {
    return QColor(static_cast<int>(RedOf(colour)), static_cast<int>(GreenOf(colour)),
                  static_cast<int>(BlueOf(colour)));
}

QRect DialogRect(const QFontMetrics& metrics, int left, int top, int width, int height) {
    const QString letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const int letterCount = static_cast<int>(letters.size());
    const int baseX = (metrics.horizontalAdvance(letters) + letterCount / 2) / letterCount;
    const int baseY = metrics.height();
    const auto pixels = [](int units, int base, int parts) {
        return (units * base + parts / 2) / parts;
    };
    return {pixels(left, baseX, 4), pixels(top, baseY, 8), pixels(width, baseX, 4),
            pixels(height, baseY, 8)};
}

void PaintFrame(QPainter& painter, const QRect& rect, const QColor& topLeft,
                const QColor& bottomRight) {
    // Filled pixel by pixel and not drawn as lines: at every scale a frame then ends where a filled
    // rectangle ends.
    const int width = rect.width();
    const int height = rect.height();
    painter.fillRect(QRect(rect.left(), rect.top(), width - 1, 1), topLeft);
    painter.fillRect(QRect(rect.left(), rect.top(), 1, height - 1), topLeft);
    painter.fillRect(QRect(rect.left(), rect.bottom(), width, 1), bottomRight);
    painter.fillRect(QRect(rect.right(), rect.top(), 1, height), bottomRight);
}

void PaintThinFrame(QPainter& painter, const QRect& rect) {
    PaintFrame(painter, rect, Qt::white, Qt::black);
}

void NameControl(QObject& control, int id) { control.setObjectName(QString::number(id)); }

}  // namespace orvane
