#include "windows/file_dialogs.h"

#include <QDialog>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <iterator>

#include "storage/file_dialog_model.h"
#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/look.h"
#include "windows/message_box.h"
#include "windows/sheet_list_view.h"

namespace orvane {

namespace {

// What was typed or pasted, as a name on one line.
std::string NameFrom(const QString& typed) {
    std::string name = BytesFrom(typed);
    for (char& byte : name) {
        if (byte == '\0' || byte == '\r' || byte == '\n') byte = ' ';
    }
    return name;
}

// A button with a small arrow on it, which points up or down.
class ArrowButton : public QPushButton {
public:
    ArrowButton(QWidget* parent, bool pointsUp) : QPushButton(parent), isUp(pointsUp) {}

protected:
    void paintEvent(QPaintEvent* event) override {
        QPushButton::paintEvent(event);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(QRectF(rect()).center());
        if (!isUp) painter.scale(1, -1);
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().buttonText());
        const QPointF arrow[] = {{0, -5}, {5, 0}, {2, 0}, {2, 5}, {-2, 5}, {-2, 0}, {-5, 0}};
        painter.drawPolygon(arrow, static_cast<int>(std::size(arrow)));
    }

private:
    bool isUp;
};

// A place in a dialog, in dialog units.
struct Place {
    int left, top, width, height;
};

QRect PixelsOf(const Place& place) {
    return DialogRect(QFontMetrics(InterfaceFont()), place.left, place.top, place.width,
                      place.height);
}

// What both dialogs are.
class SheetDialog : public QDialog {
protected:
    SheetDialog(QWidget* owner, const char* title) : QDialog(owner), messageBox(this) {
        setFont(InterfaceFont());
        setWindowTitle(QString(title));
    }

    static void PutControl(QWidget& control, int id, const Place& place) {
        NameControl(control, id);
        control.setGeometry(PixelsOf(place));
    }

    // Runs `action` when the button is pressed. No button but the main one answers to Enter.
    template <typename Action>
    void PutButton(QPushButton& button, int id, const Place& place, Action action) {
        PutControl(button, id, place);
        button.setAutoDefault(false);
        connect(&button, &QPushButton::clicked, this, [this, action] { Finish(action()); });
    }

    void Finish(DialogStep step) {
        if (step == DialogStep::refresh) Refresh();
        if (step == DialogStep::accept) accept();
    }
    virtual void Refresh() = 0;

    MessageBox messageBox;
};

class FileDialog : public SheetDialog {
public:
    FileDialog(QWidget* owner, const std::string& archivePath, const std::string& currentName,
               const std::string& sheetText, const SheetRenamed& renamed)
        : SheetDialog(owner, "File"),
          model(archivePath, currentName, sheetText, renamed, messageBox) {
        setFixedSize(PixelsOf({0, 0, 390, 290}).size());
        PutControls();
        if (model.IsSaveMode()) {
            ShowAsSaveMode();
        } else {
            saveAsButton.hide();
            openButton.setDefault(true);
        }
        model.Start();
        Refresh();
        nameBox.setFocus();
    }

    FileDialogModel model;

private:
    void PutControls();
    void ShowAsSaveMode();
    void Refresh() override {
        list.Refresh();
        nameBox.setText(QStringFrom(model.nameText));
    }

    // In the order in which the tab key goes round.
    QLineEdit nameBox{this};
    SheetListView list{model, this};
    QPushButton saveAsButton{"Save as", this};
    QPushButton openButton{"Open", this};
    QPushButton renameButton{"Rename", this};
    QPushButton deleteButton{"Delete", this};
    ArrowButton upButton{this, true};
    ArrowButton downButton{this, false};
};

void FileDialog::PutControls() {
    namespace id = ids::fileDialog;
    PutControl(nameBox, id::nameBox, {7, 7, 326, 12});
    PutControl(list, id::sheetList, {7, 29, 326, 254});
    PutButton(saveAsButton, id::saveAsButton, {343, 7, 40, 15}, [this] { return model.SaveAs(); });
    PutButton(openButton, id::openButton, {343, 65, 40, 15}, [this] { return model.Open(); });
    PutButton(renameButton, id::renameButton, {343, 86, 40, 15}, [this] { return model.Rename(); });
    PutButton(deleteButton, id::deleteButton, {343, 107, 40, 15},
              [this] { return model.Delete(); });
    PutButton(upButton, id::moveUpButton, {352, 151, 18, 14}, [this] { return model.MoveUp(); });
    PutButton(downButton, id::moveDownButton, {352, 166, 18, 14},
              [this] { return model.MoveDown(); });
    upButton.setAccessibleName("Move up");
    downButton.setAccessibleName("Move down");

    connect(&nameBox, &QLineEdit::textEdited, this,
            [this](const QString& text) { model.nameText = NameFrom(text); });
    list.onRowChosen = [this](std::size_t row) {
        model.Select(row);
        nameBox.setText(QStringFrom(model.nameText));
    };
    list.onDoubleClick = [this](bool isOnRow) {
        if (isOnRow) Finish(model.DoubleClick());
    };
}

void FileDialog::ShowAsSaveMode() {
    setWindowTitle("Save as ...");
    for (QPushButton* const button : {&openButton, &renameButton, &deleteButton}) button->hide();
    saveAsButton.move(saveAsButton.x(), height() / 2 - 2 * saveAsButton.height());
    saveAsButton.setDefault(true);
}

class SamplesDialog : public SheetDialog {
public:
    SamplesDialog(QWidget* owner, const std::string& archivePath)
        : SheetDialog(owner, "Sample files"), model(archivePath, messageBox) {
        resize(PixelsOf({0, 0, 420, 244}).size());
        PutControl(list, ids::fileDialog::sheetList, {7, 7, 357, 230});
        PutButton(openButton, ids::fileDialog::openButton, {373, 104, 40, 15},
                  [this] { return model.Open(); });
        openButton.setDefault(true);
        list.onRowChosen = [this](std::size_t row) { model.Select(row); };
        list.onDoubleClick = [this](bool) { Finish(model.DoubleClick()); };
        model.Start();
        Refresh();
        list.setFocus();
    }

    SamplesDialogModel model;

private:
    void Refresh() override { list.Refresh(); }

    SheetListView list{model, this};
    QPushButton openButton{"Open", this};
};

}  // namespace

std::optional<ChosenSheet> FileDialogs::ShowOpen(const std::string& archivePath,
                                                 const std::string& currentName,
                                                 const SheetRenamed& renamed) {
    FileDialog dialog(owner, archivePath, currentName, {}, renamed);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return ChosenSheet{dialog.model.currentName, dialog.model.sheetText};
}

std::optional<std::string> FileDialogs::ShowSave(const std::string& archivePath,
                                                 const std::string& currentName,
                                                 const std::string& text) {
    FileDialog dialog(owner, archivePath, currentName, text, {});
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.model.currentName;
}

std::optional<ChosenSheet> FileDialogs::ShowSamples(const std::string& archivePath) {
    SamplesDialog dialog(owner, archivePath);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return ChosenSheet{dialog.model.chosenName, dialog.model.chosenText};
}

}  // namespace orvane
