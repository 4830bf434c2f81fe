#pragma once

#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <cstddef>

#include "locus/locus_store.h"

namespace orvane {

// The page of one curve, with a menu that copies and saves its picture and saves its points. What
// was painted is kept as a picture and made anew for a new size or scale of the screen, so that a
// page of millions of points comes up at once. While the size of such a page changes, its last
// picture is stretched over it.
class LocusPage : public QWidget {
public:
    // Curves of more points are stretched until a size has stayed for `settleMilliseconds`.
    static constexpr std::size_t quickPoints = 250'000;
    static constexpr int settleMilliseconds = 150;

    // Labels have `labelPrecision` decimals. The curve must outlive the page; a page without one
    // is empty and has no menu.
    LocusPage(QWidget* parent, const LocusSet* set, int labelPrecision);

    // Gives the memory of the picture back; the next painting makes it again.
    void ForgetPicture() { picture = QPixmap(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool IsPictureOfNow() const;
    void MakePicture();
    void CopyPicture();

    const LocusSet* curve;
    int precision;
    QPixmap picture;
    QTimer settled;  // runs while the size changes
};

}  // namespace orvane
