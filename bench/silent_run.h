#pragma once

#include <string>

#include "app/calculation.h"

namespace orvane::bench {

// A whole run that nobody watches, as the command-line tool makes it.
inline std::string RunSilently(std::string_view sheet, CalcParameters parameters = {}) {
    class Silent : public MessageDisplay, public ProgressDisplay, public ResultDisplay {
        void ShowMessage(std::string_view, std::string_view) override {}
        void Step() override {}
        void Show() override {}
        void Hide() override {}
        void ShowTexts(const ColouredText&, const ColouredText&) override {}
    };
    Silent silent;
    CalculationTexts texts;
    RunCalculation(sheet, parameters, {silent, silent, silent}, texts);
    return texts.resultText;
}

}  // namespace orvane::bench
