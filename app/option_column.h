#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <string_view>

class QWidget;

namespace orvane {

struct CalcParameters;
struct MainLayout;

// A whole number as people type it: digits with an optional sign, as far as they go; 0 where there
// is none. One that is too large is the largest.
int ReadPrecision(std::string_view text);

// The run's options at the right of the main window. The controls are the working copy: they are
// set once from the options and read back at each run and at the end.
class OptionColumn {
public:
    explicit OptionColumn(QWidget* parent);

    void Show(const CalcParameters& parameters);
    void Read(CalcParameters& parameters) const;
    int Precision() const;
    void Place(const MainLayout& layout);

private:
    QGroupBox bitsGroup;
    QComboBox bitsList;
    QGroupBox precisionGroup;
    QLineEdit precisionBox;
    QCheckBox showSign;
    QCheckBox positionLine;
    QCheckBox breakText;
    QCheckBox formulaBreak;
};

}  // namespace orvane
