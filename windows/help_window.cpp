#include "windows/help_window.h"

#include <QAction>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/help_topics.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr QSize usualSize(860, 740);
constexpr int edge = 40;  // to the edges of the screen, where the size allows it
constexpr int gap = 6;
constexpr int findBoxWidth = 180;

}  // namespace

HelpWindow::HelpWindow(const QString& pages, QWidget* main)
    : QWidget(main, Qt::Window),
      browser(pages, this),
      back(QStringLiteral("Back"), this),
      forward(QStringLiteral("Forward"), this),
      contents(QStringLiteral("Contents"), this),
      findLabel(QStringLiteral("Find:"), this),
      findBox(this),
      notFound(QStringLiteral("Not on this page"), this) {
    setAttribute(Qt::WA_DeleteOnClose, main == nullptr);
    if (main != nullptr) main->installEventFilter(this);
    LayOut();
    AddKeys();
    connect(&browser, &QTextBrowser::sourceChanged, this, &HelpWindow::ShowTitle);
    connect(&browser, &QTextBrowser::backwardAvailable, &back, &QWidget::setEnabled);
    connect(&browser, &QTextBrowser::forwardAvailable, &forward, &QWidget::setEnabled);
    connect(&back, &QPushButton::clicked, &browser, &QTextBrowser::backward);
    connect(&forward, &QPushButton::clicked, &browser, &QTextBrowser::forward);
    connect(&contents, &QPushButton::clicked, this, &HelpWindow::ShowContents);
    connect(&findBox, &QLineEdit::returnPressed, this, [this] { FindNext(false); });
    connect(&findBox, &QLineEdit::textEdited, this, [this] { ShowFound(true); });
}

void HelpWindow::LayOut() {
    NameControl(browser, ids::helpWindow::page);
    NameControl(back, ids::helpWindow::backButton);
    NameControl(forward, ids::helpWindow::forwardButton);
    NameControl(contents, ids::helpWindow::contentsButton);
    NameControl(findBox, ids::helpWindow::findBox);
    NameControl(notFound, ids::helpWindow::notFoundLabel);
    back.setEnabled(false);
    forward.setEnabled(false);
    findBox.setFixedWidth(findBoxWidth);
    findLabel.setBuddy(&findBox);
    QPalette red = notFound.palette();
    red.setColor(QPalette::WindowText, QColor(160, 0, 0));
    notFound.setPalette(red);
    notFound.hide();

    auto* const columns = new QVBoxLayout(this);
    columns->setContentsMargins(0, gap, 0, 0);
    columns->setSpacing(gap);
    auto* const bar = new QHBoxLayout;
    bar->setContentsMargins(gap, 0, gap, 0);
    bar->setSpacing(gap);
    for (QPushButton* button : {&back, &forward, &contents}) bar->addWidget(button);
    bar->addStretch();
    bar->addWidget(&notFound);
    bar->addWidget(&findLabel);
    bar->addWidget(&findBox);
    columns->addLayout(bar);
    columns->addWidget(&browser);
    browser.setFocus();
}

void HelpWindow::AddKeys() {
    AddKey(Qt::ALT | Qt::Key_Left, [this] { browser.backward(); });
    AddKey(Qt::ALT | Qt::Key_Right, [this] { browser.forward(); });
    AddKey(Qt::ALT | Qt::Key_Home, [this] { ShowContents(); });
    AddKey(Qt::CTRL | Qt::Key_F, [this] {
        findBox.setFocus();
        findBox.selectAll();
    });
    AddKey(Qt::Key_F3, [this] { FindNext(false); });
    AddKey(Qt::SHIFT | Qt::Key_F3, [this] { FindNext(true); });
    AddKey(Qt::CTRL | Qt::Key_Plus, [this] { browser.Zoom(1); });
    AddKey(Qt::CTRL | Qt::Key_Equal, [this] { browser.Zoom(1); });
    AddKey(Qt::CTRL | Qt::Key_Minus, [this] { browser.Zoom(-1); });
    AddKey(Qt::CTRL | Qt::Key_0, [this] { browser.Zoom(0); });
    AddKey(Qt::Key_Escape, [this] { close(); });
}

void HelpWindow::AddKey(const QKeySequence& keys, const std::function<void()>& action) {
    auto* const key = new QAction(this);
    key->setShortcut(keys);
    connect(key, &QAction::triggered, this, action);
    addAction(key);
}

void HelpWindow::ShowUnseen(const QString& topic) {
    if (!browser.HasPage(topic)) return;
    browser.ShowTopic(topic);
    browser.clearHistory();
}

void HelpWindow::ShowTopic(const QString& topic, const QWidget* owner) {
    if (!browser.HasPage(topic)) return;
    browser.ShowTopic(topic);
    if (!isVisible()) {
        browser.clearHistory();
        PlaceOnScreenOf(owner);
    }
    if (isMinimized()) showNormal();
    show();
    StayUsable();
    browser.ReturnToPlace();  // the page has its width only now
    raise();
    activateWindow();
}

void HelpWindow::ShowContents() {
    const QString topic = QStringFrom(topics::contents);
    if (browser.HasPage(topic)) browser.ShowTopic(topic);
}

void HelpWindow::ShowTitle() {
    const QString title = browser.documentTitle();
    setWindowTitle(title.isEmpty() ? QStringLiteral("Orvane help") : title + " - Orvane help");
    ShowFound(true);
}

// At the right side, so that the sheet is seen beside it where there is room for both.
void HelpWindow::PlaceOnScreenOf(const QWidget* owner) {
    const QScreen* const screen = owner != nullptr ? owner->screen() : this->screen();
    const QRect area = screen->availableGeometry().adjusted(edge, edge, -edge, -edge);
    QRect place(QPoint(), usualSize.boundedTo(area.size()));
    place.moveTopRight(area.topRight());
    setGeometry(place);
}

// A dialog that waits for its answer blocks every window but those that belong to it, so this one
// belongs to the last dialog that came up.
void HelpWindow::StayUsable() {
    QWindow* const own = windowHandle();
    if (own == nullptr) return;
    QWindow* owner = QGuiApplication::modalWindow();
    if (owner != nullptr) {
        connect(owner, &QWindow::visibleChanged, this, &HelpWindow::StayUsable,
                static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::UniqueConnection));
    } else if (parentWidget() != nullptr) {
        owner = parentWidget()->windowHandle();
    }
    if (own->transientParent() != owner) own->setTransientParent(owner);
}

bool HelpWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowBlocked) StayUsable();
    return QWidget::event(event);
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
    const bool isHidden = event->type() == QEvent::Hide && !event->spontaneous();
    if (watched == parentWidget() && isHidden) close();
    return QWidget::eventFilter(watched, event);
}

void HelpWindow::FindNext(bool backward) {
    if (findBox.text().isEmpty()) return findBox.setFocus();
    ShowFound(browser.Find(findBox.text(), backward));
}

void HelpWindow::ShowFound(bool isFound) { notFound.setVisible(!isFound); }

}  // namespace orvane
