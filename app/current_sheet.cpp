#include "app/current_sheet.h"

#include "storage/archive_file.h"

namespace orvane {

std::string CurrentSheet::NameInUserArchive() const {
    return archiveKind == userArchive ? sheetName : std::string();
}

void PrepareArchives(CurrentSheet& sheet, const std::string& programFolder) {
    sheet.userFilePath = programFolder + "/Setting/user.file";
    sheet.sampleFilePath = programFolder + "/Setting/sample.file";
    PrepareArchive(sheet.userFilePath);
    PrepareArchive(sheet.sampleFilePath);
}

std::string TitleOfSheet(std::string_view sheetName) {
    std::string title(programTitle);
    title += ": ";
    title += sheetName;
    return title;
}

}  // namespace orvane
