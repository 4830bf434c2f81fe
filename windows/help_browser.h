#pragma once

#include <QString>
#include <QTextBrowser>

// The pages of the help, one at a time, with the way back. Everything comes from one folder: a
// page can't load anything from elsewhere, and links to the web open in the system's browser.

namespace orvane {

class HelpBrowser : public QTextBrowser {
    Q_OBJECT

public:
    HelpBrowser(const QString& pages, QWidget* parent);

    // Whether there is a page for the topic, which may have "#" and a place behind it.
    bool HasPage(const QString& topic) const;
    // Shows a topic that has a page.
    void ShowTopic(const QString& topic);
    // The topic on the screen; empty before the first one.
    QString ShownTopic() const;
    // Scrolls to the topic's place anew, when the width of the page has changed.
    void ReturnToPlace();

    // Selects the next place of the text, or the one before, and goes on at the other end of the
    // page. Capitals don't matter. False, with nothing changed, if the page does not have it.
    bool Find(const QString& text, bool backward);

    // One step larger for 1, smaller for -1, back to the first size for 0.
    void Zoom(int steps);

    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QUrl UrlOf(const QString& topic) const;
    // The path of a file in the folder; empty for everything else.
    QString PathOf(const QUrl& url) const;
    void FollowLink(const QUrl& link);
    void SetTextSize(int pixels);

    const QString folder;  // without links in its path, and without a slash at its end
    int textSize;
};

}  // namespace orvane
