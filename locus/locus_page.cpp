#include "locus/locus_page.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>

#include "locus/curve_files.h"
#include "locus/plot_painter.h"
#include "locus/plot_pictures.h"
#include "windows/control_ids.h"
#include "windows/look.h"

namespace orvane {

LocusPage::LocusPage(QWidget* parent, const LocusSet* set, int labelPrecision)
    : QWidget(parent), curve(set), precision(labelPrecision) {
    // Every pixel comes from the picture: nothing is cleared ahead of it, so nothing flickers.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    settled.setSingleShot(true);
    connect(&settled, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

bool LocusPage::IsPictureOfNow() const {
    const qreal scale = devicePixelRatioF();
    return picture.size() == (QSizeF(size()) * scale).toSize() &&
           picture.devicePixelRatio() == scale;
}

void LocusPage::resizeEvent(QResizeEvent*) {
    const bool isSlow = curve != nullptr && curve->points.size() > quickPoints;
    if (isSlow && !picture.isNull()) settled.start(settleMilliseconds);
}

void LocusPage::paintEvent(QPaintEvent*) {
    const bool isStretched = settled.isActive() && !picture.isNull();
    if (!isStretched && !IsPictureOfNow()) MakePicture();
    QPainter painter(this);
    if (picture.isNull()) {  // a page too large for one more picture of it
        PaintPlotPage(painter, rect(), curve, precision);
    } else if (isStretched) {
        painter.drawPixmap(rect(), picture);
    } else {
        painter.drawPixmap(0, 0, picture);
    }
}

void LocusPage::MakePicture() {
    const qreal scale = devicePixelRatioF();
    picture = QPixmap((QSizeF(size()) * scale).toSize());
    if (picture.isNull()) return;
    picture.setDevicePixelRatio(scale);
    QPainter painter(&picture);
    PaintPlotPage(painter, rect(), curve, precision);
}

void LocusPage::contextMenuEvent(QContextMenuEvent* event) {
    if (curve == nullptr) return;
    namespace id = ids::locusWindow;
    QMenu menu(this);
    NameControl(*menu.addAction("Copy picture", this, [this] { CopyPicture(); }), id::copyPicture);
    const auto savePicture = [this] { SavePicture(window(), *curve, size(), precision); };
    NameControl(*menu.addAction("Save picture...", this, savePicture), id::savePicture);
    const auto savePoints = [this] { SavePoints(window(), *curve); };
    NameControl(*menu.addAction("Save points...", this, savePoints), id::savePoints);
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    menu.exec(isByMouse ? event->globalPos() : mapToGlobal(rect().center()));
}

void LocusPage::CopyPicture() {
    const QImage image = PlotImage(*curve, size(), precision, devicePixelRatioF());
    if (!image.isNull()) QGuiApplication::clipboard()->setImage(image);
}

}  // namespace orvane
