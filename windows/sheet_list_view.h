#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <cstddef>
#include <functional>
#include <optional>

#include "storage/file_dialog_model.h"

namespace orvane {

// The names of an archive's sheets, one line each whatever they hold. Only the rows in view are
// ever turned into text.
class SheetRows : public QAbstractListModel {
public:
    explicit SheetRows(const SheetListModel& sheetList) : model(sheetList) {}

    // The model's rows are others now.
    void Reset() {
        beginResetModel();
        endResetModel();
    }
    int rowCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const SheetListModel& model;
};

// The list of both dialogs with sheets.
class SheetListView : public QListView {
public:
    SheetListView(const SheetListModel& sheetList, QWidget* parent);

    // The user has chosen a row, perhaps the one that was chosen before.
    std::function<void(std::size_t row)> onRowChosen;
    std::function<void(bool isOnRow)> onDoubleClick;

    // Shows the model's rows and its selected row anew.
    void Refresh();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    void Choose(const QModelIndex& index);

    const SheetListModel& model;
    SheetRows rows;
    bool isRefreshing = false;
};

}  // namespace orvane
