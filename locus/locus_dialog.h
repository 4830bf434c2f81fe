#pragma once

#include <QDialog>
#include <QPushButton>
#include <QTabBar>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "locus/locus_page.h"
#include "locus/locus_store.h"

namespace orvane {

// Shows a help topic, as ShowHelpTopic does.
using TopicViewer = std::function<void(QWidget* owner, const QString& topic)>;

// Tabs that can be filled with very many: the toolkit measures all of them anew at each one that is
// added, which is left out meanwhile.
class CurveTabs : public QTabBar {
public:
    using QTabBar::QTabBar;

    void Fill(const LocusStore& store);

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;

private:
    bool isFilling = false;
};

// The curves of the last calculation, a tab with a page for each. Built afresh at each opening;
// nothing in the store changes. The window comes up where it was closed, as far as the settings
// file tells.
class LocusDialog : public QDialog {
public:
    // The store must stay as it is while the window is open. The topic is shown in the program's
    // help window unless `viewer` is given.
    LocusDialog(QWidget* owner, const LocusStore& shown, std::string settingsFile,
                TopicViewer viewer = {});

    // Shows the window and comes back when it is closed. Labels of the axes have `labelPrecision`
    // decimals.
    void Run(int labelPrecision);

    void done(int result) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // Pages that keep their pictures. A picture is as large as a screen; a store may hold very many
    // curves.
    static constexpr std::size_t keptPictures = 4;

    bool HasTabs() const { return tabs.count() > 0; }
    void AddPages();
    void ShowPage(int index);
    void RestorePlacement();
    void LayOut();

    const LocusStore& store;
    std::string settingsPath;
    TopicViewer showTopic;
    int precision = 0;

    QPushButton helpButton{QStringLiteral("Help"), this};
    QWidget tabControl{this};
    CurveTabs tabs{&tabControl};
    // One for each curve, made when its tab is pressed for the first time.
    std::vector<std::unique_ptr<LocusPage>> pages;
    LocusPage* shownPage = nullptr;
    std::deque<LocusPage*> recentPages;  // the shown one first
};

}  // namespace orvane
