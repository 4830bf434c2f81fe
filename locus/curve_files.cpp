#include "locus/curve_files.h"

#include <QFileDialog>
#include <QFileInfo>
#include <algorithm>
#include <optional>
#include <span>

#include "locus/plot_pictures.h"
#include "locus/points_text.h"
#include "locus/whole_file.h"
#include "storage/qt_bytes.h"
#include "windows/message_box.h"

namespace orvane {
namespace {

struct FileKind {
    const char* ending;  // with its point
    const char* filter;
};
constexpr FileKind pictureKinds[] = {{".svg", "SVG picture (*.svg)"},
                                     {".png", "PNG picture (*.png)"},
                                     {".pdf", "PDF document (*.pdf)"}};
constexpr FileKind pointKinds[] = {{".csv", "CSV table (*.csv)"}};

// The ending decides. A name may hold other points, so only one of the known endings counts.
QString WithEnding(const QString& path, std::span<const FileKind> kinds, const QString& filter) {
    const auto isEndingOf = [&path](const FileKind& kind) {
        return path.endsWith(QLatin1String(kind.ending), Qt::CaseInsensitive);
    };
    if (std::any_of(kinds.begin(), kinds.end(), isEndingOf)) return path;
    const auto isChosen = [&filter](const FileKind& kind) {
        return filter == QLatin1String(kind.filter);
    };
    const auto chosen = std::find_if(kinds.begin(), kinds.end(), isChosen);
    return path + QLatin1String((chosen == kinds.end() ? kinds.front() : *chosen).ending);
}

bool MayReplace(QWidget* owner, const QString& path) {
    if (!QFileInfo::exists(path)) return true;
    const std::string name = BytesFrom(QFileInfo(path).fileName());
    return MessageBox(owner).Confirm("\"" + name + "\" exists already. Replace it?");
}

// Asks until the file is new or may be replaced; nothing when the user gives up. The dialog's own
// question about a file that exists comes ahead of the ending, so it is asked here.
std::optional<QString> AskPath(QWidget* owner, const char* title, std::span<const FileKind> kinds,
                               const QString& name) {
    QFileDialog dialog(owner, QString(title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    QStringList filters;
    for (const FileKind& kind : kinds) filters += QString(kind.filter);
    dialog.setNameFilters(filters);
    dialog.selectFile(name);
    while (dialog.exec() == QDialog::Accepted) {
        const QStringList chosen = dialog.selectedFiles();
        if (chosen.isEmpty()) continue;
        const QString path = WithEnding(chosen.first(), kinds, dialog.selectedNameFilter());
        if (MayReplace(owner, path)) return path;
    }
    return std::nullopt;
}

void TellFailure(QWidget* owner, const QString& path, const std::optional<QString>& failure) {
    if (!failure) return;
    const std::string name = BytesFrom(QFileInfo(path).fileName());
    MessageBox(owner).ShowMessage("\"" + name + "\" can't be saved: " + BytesFrom(*failure));
}

}  // namespace

void SavePicture(QWidget* owner, const LocusSet& curve, QSize size, int labelPrecision) {
    const QString name = QStringFrom(PointsName(curve));
    const std::optional<QString> path = AskPath(owner, "Save picture", pictureKinds, name);
    if (!path) return;
    const PictureFormat format = PictureFormatOf(*path).value_or(PictureFormat::svg);
    TellFailure(owner, *path, SavePlotPicture(curve, size, labelPrecision, format, *path));
}

void SavePoints(QWidget* owner, const LocusSet& curve) {
    const QString name = QStringFrom(PointsName(curve));
    const std::optional<QString> path = AskPath(owner, "Save points", pointKinds, name);
    if (path) TellFailure(owner, *path, WriteWholeFile(*path, PointsText(curve)));
}

}  // namespace orvane
