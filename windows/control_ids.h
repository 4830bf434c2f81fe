#pragma once

#include <cstdint>

// The numbers of controls and commands, in one place. A control's number in decimal is its object
// name, so that tests and tools find it; the numbers of the height commands are also what the
// settings file holds. Numbers of controls are unique only within their window.

namespace orvane::ids {

namespace mainWindow {
inline constexpr int resultPane = 1009;
inline constexpr int calculationLabel = 1013;
inline constexpr int resultLabel = 1014;
inline constexpr int systemBitsList = 1018;
inline constexpr int systemBitsGroup = 1019;
inline constexpr int floatPrecisionGroup = 1020;
inline constexpr int floatPrecisionBox = 1021;
inline constexpr int showSignCheck = 1022;
inline constexpr int positionLineCheck = 1023;
inline constexpr int progressBar = 1024;
inline constexpr int formulaBreakCheck = 1025;
inline constexpr int breakTextCheck = 1026;
}  // namespace mainWindow

namespace fileDialog {
inline constexpr int moveUpButton = 1011;
inline constexpr int moveDownButton = 1012;
inline constexpr int sheetList = 1014;
inline constexpr int nameBox = 1016;
inline constexpr int openButton = 1030;
inline constexpr int renameButton = 1031;
inline constexpr int deleteButton = 1032;
inline constexpr int saveAsButton = 1033;
}  // namespace fileDialog

namespace aboutDialog {
inline constexpr int scrollingText = 1050;
}  // namespace aboutDialog

namespace newsDialog {
inline constexpr int closeButton = 1027;
inline constexpr int page = 1051;
}  // namespace newsDialog

namespace locusWindow {
inline constexpr int helpButton = 1028;
inline constexpr int tabControl = 1029;
inline constexpr int copyPicture = 33001;  // of a page's menu
inline constexpr int savePicture = 33002;
inline constexpr int savePoints = 33003;
}  // namespace locusWindow

namespace keywordDialog {
inline constexpr int helpButton = 1026;
inline constexpr int closeButton = 1027;
inline constexpr int keywordList = 1034;
}  // namespace keywordDialog

namespace textColourDialog {
inline constexpr int okButton = 1005;
inline constexpr int cancelButton = 1006;
inline constexpr int restoreButton = 1007;
inline constexpr int firstColourButton = 1027;  // the other six follow
}  // namespace textColourDialog

namespace optionsDialog {
inline constexpr int fineList = 1030;
inline constexpr int applyButton = 1031;
}  // namespace optionsDialog

namespace helpWindow {
inline constexpr int page = 1060;
inline constexpr int backButton = 1061;
inline constexpr int forwardButton = 1062;
inline constexpr int contentsButton = 1063;
inline constexpr int findBox = 1064;
inline constexpr int notFoundLabel = 1065;
}  // namespace helpWindow

namespace command {
inline constexpr int helpContents = 32781;
inline constexpr int about = 32783;
inline constexpr int textColours = 32786;
inline constexpr int copyResult = 32803;
inline constexpr int blackOutput = 32805;
inline constexpr int height6 = 32806;
inline constexpr int height1 = 32807;
inline constexpr int height3 = 32808;
inline constexpr int height2 = 32809;
inline constexpr int height4 = 32810;
inline constexpr int height5 = 32811;
inline constexpr int height7 = 32812;
inline constexpr int openSamples = 32813;
inline constexpr int alwaysOnTop = 32814;
inline constexpr int selectAllResult = 32815;
inline constexpr int locus = 32816;
inline constexpr int firstTopic = 32824;
inline constexpr int lastTopic = 32923;
inline constexpr int softwareNews = 32950;
inline constexpr int test = 32951;
inline constexpr int generalOptions = 32953;
inline constexpr int allKeywords = 32954;
}  // namespace command

}  // namespace orvane::ids
