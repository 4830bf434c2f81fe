#include "app/option_column.h"

#include <QRegularExpressionValidator>
#include <charconv>
#include <limits>

#include "app/main_layout.h"
#include "app/widget_place.h"
#include "core/calc_parameters.h"
#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/look.h"

namespace orvane {

namespace {

// As many rows as fit the height of the dropped-down list.
constexpr int visibleRows = 16;
constexpr int closedListHeight = 20;

}  // namespace

int ReadPrecision(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range) {
        return text.starts_with('-') ? std::numeric_limits<int>::min()
                                     : std::numeric_limits<int>::max();
    }
    return number;
}

OptionColumn::OptionColumn(QWidget* parent)
    : bitsGroup(QStringLiteral("System bits"), parent),
      bitsList(parent),
      precisionGroup(QStringLiteral("Float precision"), parent),
      precisionBox(parent),
      showSign(QStringLiteral("Show sign"), parent),
      positionLine(QStringLiteral("Position line"), parent),
      breakText(QStringLiteral("Break + text"), parent),
      formulaBreak(QStringLiteral("Formula + break"), parent) {
    using namespace ids::mainWindow;
    NameControl(bitsGroup, systemBitsGroup);
    NameControl(bitsList, systemBitsList);
    NameControl(precisionGroup, floatPrecisionGroup);
    NameControl(precisionBox, floatPrecisionBox);
    NameControl(showSign, showSignCheck);
    NameControl(positionLine, positionLineCheck);
    NameControl(breakText, breakTextCheck);
    NameControl(formulaBreak, formulaBreakCheck);

    for (int bits = smallestWordBits; bits <= largestWordBits; ++bits) {
        bitsList.addItem(QString::number(bits));
    }
    bitsList.setMaxVisibleItems(visibleRows);
    precisionBox.setAlignment(Qt::AlignHCenter);
    precisionBox.setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9]*")), &precisionBox));
}

void OptionColumn::Show(const CalcParameters& parameters) {
    bitsList.setCurrentIndex(parameters.systemBitsIndex);
    precisionBox.setText(QString::number(parameters.floatPrecision));
    showSign.setChecked(parameters.showSign);
    positionLine.setChecked(parameters.positionLine);
    breakText.setChecked(parameters.breakText);
    formulaBreak.setChecked(parameters.formulaBreak);
}

void OptionColumn::Read(CalcParameters& parameters) const {
    // A stored number that no row stands for leaves the list without a choice: the usual word is
    // taken then.
    constexpr int usualRow = 32 - smallestWordBits;
    const int row = bitsList.currentIndex();
    parameters.systemBitsIndex = row < 0 ? usualRow : row;
    parameters.floatPrecision = Precision();
    parameters.showSign = showSign.isChecked();
    parameters.positionLine = positionLine.isChecked();
    parameters.breakText = breakText.isChecked();
    parameters.formulaBreak = formulaBreak.isChecked();
}

int OptionColumn::Precision() const { return ReadPrecision(BytesFrom(precisionBox.text())); }

void OptionColumn::Place(const MainLayout& layout) {
    PlaceAt(bitsGroup, layout.systemBitsGroup);
    EdgeRect closedList = layout.systemBitsList;
    closedList.bottom = closedList.top + closedListHeight;
    PlaceAt(bitsList, closedList);
    PlaceAt(precisionGroup, layout.floatPrecisionGroup);
    PlaceAt(precisionBox, layout.floatPrecisionBox);
    PlaceAt(showSign, layout.showSignCheck);
    PlaceAt(positionLine, layout.positionLineCheck);
    PlaceAt(breakText, layout.breakTextCheck);
    PlaceAt(formulaBreak, layout.formulaBreakCheck);
}

}  // namespace orvane
