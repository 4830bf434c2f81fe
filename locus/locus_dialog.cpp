#include "locus/locus_dialog.h"

#include <QPainter>
#include <algorithm>
#include <utility>

#include "locus/locus_layout.h"
#include "storage/option_settings.h"
#include "storage/qt_bytes.h"
#include "storage/settings_file.h"
#include "windows/control_ids.h"
#include "windows/help_viewer.h"
#include "windows/look.h"
#include "windows/window_placement.h"

namespace orvane {
namespace {

constexpr QSize firstSize(680, 540);
constexpr int frameWidth = 2;  // of the sunken frame, outside of what it is around

PlotRect ClientOf(const QWidget& widget) { return {0, 0, widget.width(), widget.height()}; }

// A window may be too small for what stands in it.
QRect QRectOf(const PlotRect& rect) {
    return {rect.left, rect.top, std::max(rect.Width(), 0), std::max(rect.Height(), 0)};
}

void PaintSunkenFrame(QPainter& painter, const QRect& around, const QPalette& palette) {
    for (int width = 1; width <= frameWidth; ++width) {
        const QRect ring = around.adjusted(-width, -width, width, width);
        painter.fillRect(ring.left(), ring.top(), ring.width(), 1, palette.dark());
        painter.fillRect(ring.left(), ring.top(), 1, ring.height(), palette.dark());
        painter.fillRect(ring.left(), ring.bottom(), ring.width(), 1, palette.light());
        painter.fillRect(ring.right(), ring.top(), 1, ring.height(), palette.light());
    }
}

}  // namespace

void CurveTabs::Fill(const LocusStore& store) {
    isFilling = true;
    for (int index = 0; index < store.Count(); ++index) {
        addTab(QStringFrom(TabTitle(store[index])));
    }
    isFilling = false;
    setExpanding(false);  // and measures them
}

QSize CurveTabs::tabSizeHint(int index) const {
    return isFilling ? QSize() : QTabBar::tabSizeHint(index);
}

QSize CurveTabs::minimumTabSizeHint(int index) const {
    return isFilling ? QSize() : QTabBar::minimumTabSizeHint(index);
}

LocusDialog::LocusDialog(QWidget* owner, const LocusStore& shown, std::string settingsFile,
                         TopicViewer viewer)
    : QDialog(owner), store(shown), settingsPath(std::move(settingsFile)), showTopic(viewer) {
    setWindowTitle(QStringLiteral("Locus"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    // The help window, which belongs to nobody, can be read while this one is open.
    setWindowModality(Qt::WindowModal);
    if (!showTopic) showTopic = ShowHelpTopic;
    NameControl(helpButton, ids::locusWindow::helpButton);
    helpButton.resize(DialogRect(fontMetrics(), 0, 0, 40, 15).size());
    connect(&helpButton, &QPushButton::clicked, this,
            [this] { showTopic(this, QString(locusHelpTopic)); });
    NameControl(tabControl, ids::locusWindow::tabControl);
    // The pressed tab and what is under it are one surface, in the colour of the pages' rims.
    QPalette surface = palette();
    surface.setBrush(QPalette::Window, surface.button());
    tabControl.setPalette(surface);
    tabControl.setAutoFillBackground(true);
    tabs.setDrawBase(false);
    connect(&tabs, &QTabBar::currentChanged, this, &LocusDialog::ShowPage);
}

void LocusDialog::Run(int labelPrecision) {
    precision = labelPrecision;
    resize(firstSize);
    RestorePlacement();
    AddPages();
    LayOut();
    exec();
}

void LocusDialog::RestorePlacement() {
    SettingsFile settings(settingsPath);
    WindowPlacement placement;
    if (!settings.Open()) return;
    if (!settings.GetPlacement(mainSection, locusWindowPlacementKey, placement)) return;
    const bool isMaximised = ApplyPlacement(*this, placement) == ShownState::maximised;
    setWindowState(isMaximised ? Qt::WindowMaximized : Qt::WindowNoState);
}

// Every way of closing ends here, with the window still shown.
void LocusDialog::done(int result) {
    SettingsFile settings(settingsPath);
    if (settings.Open()) {
        settings.SetPlacement(mainSection, locusWindowPlacementKey, PlacementOf(*this));
    }
    QDialog::done(result);
}

void LocusDialog::AddPages() {
    pages.resize(static_cast<std::size_t>(store.Count()));
    tabs.Fill(store);
    helpButton.setVisible(!HasTabs());
    tabControl.setVisible(HasTabs());
    if (HasTabs()) tabs.setFocus();
}

// The new page covers the old one before that goes away, so that nothing else shows between them.
void LocusDialog::ShowPage(int index) {
    if (index < 0) return;
    std::unique_ptr<LocusPage>& page = pages[static_cast<std::size_t>(index)];
    if (page == nullptr) {
        page = std::make_unique<LocusPage>(this, &store[index], precision);
        page->setAccessibleName(tabs.tabText(index));
    }
    LocusPage* const oldPage = std::exchange(shownPage, page.get());
    LayOut();
    shownPage->raise();
    shownPage->show();
    if (oldPage != nullptr && oldPage != shownPage) oldPage->hide();

    std::erase(recentPages, shownPage);
    recentPages.push_front(shownPage);
    if (recentPages.size() > keptPictures) {
        recentPages.back()->ForgetPicture();
        recentPages.pop_back();
    }
}

void LocusDialog::LayOut() {
    const PlotRect client = ClientOf(*this);
    const PlotPoint help = HelpButtonCorner(client, helpButton.width());
    helpButton.move(help.x, help.y);
    if (!HasTabs()) {
        tabControl.move(-tabControl.width(), -tabControl.height());
        return;
    }
    const QRect area = QRectOf(TabControlArea(client));
    const int headerHeight = tabs.sizeHint().height();
    tabControl.setGeometry(area);
    tabs.setGeometry(0, 0, area.width(), headerHeight);
    if (shownPage != nullptr) shownPage->setGeometry(QRectOf(PageArea(client, headerHeight)));
}

void LocusDialog::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    LayOut();
    update();
}

void LocusDialog::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (HasTabs()) {
        PaintSunkenFrame(painter, tabControl.geometry(), palette());
    } else {
        const QString text(noCurvesText);
        QRect area = QRectOf(NoCurvesTextArea(ClientOf(*this)));
        // Letters begin at a whole pixel.
        area.setLeft((area.width() - painter.fontMetrics().horizontalAdvance(text)) / 2);
        painter.drawText(area, Qt::AlignBottom | Qt::TextSingleLine | Qt::TextDontClip, text);
    }
}

}  // namespace orvane
