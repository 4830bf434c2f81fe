#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/sheet_commands.h"
#include "storage/file_dialog_model.h"

// What the commands on the open sheet work with, without a window.

namespace orvane::test {

// Drops carriage returns, as the real editor does.
class PlainEditor : public SheetEditor {
public:
    std::string text;

    std::string GetText() const override { return text; }
    void SetText(std::string_view newText) override {
        text = newText;
        std::erase(text, '\r');
    }
};

class PlainTitle : public TitleDisplay {
public:
    std::string title = "Orvane";

    void SetTitle(std::string_view newTitle) override { title = newTitle; }
};

// Runs what a user does in a dialog on its real model; a dialog that nobody expects fails the test.
class PlayedDialogs : public SheetDialogs {
public:
    explicit PlayedDialogs(Questions& asked) : questions(asked) {}

    // Whether the dialog is accepted.
    std::function<bool(FileDialogModel&)> play;
    std::function<bool(SamplesDialogModel&)> playSamples;
    // What the dialogs were given: path, name and text.
    std::vector<std::vector<std::string>> shown;

    std::optional<ChosenSheet> ShowOpen(const std::string& path, const std::string& name,
                                        const SheetRenamed& renamed) override {
        FileDialogModel model(path, name, "", renamed, questions);
        EXPECT_FALSE(model.IsSaveMode());
        if (!Run(model, {path, name})) return std::nullopt;
        return ChosenSheet{model.currentName, model.sheetText};
    }
    std::optional<std::string> ShowSave(const std::string& path, const std::string& name,
                                        const std::string& text) override {
        FileDialogModel model(path, name, text, {}, questions);
        EXPECT_TRUE(model.IsSaveMode());
        if (!Run(model, {path, name, text})) return std::nullopt;
        return model.currentName;
    }
    std::optional<ChosenSheet> ShowSamples(const std::string& path) override {
        SamplesDialogModel model(path, questions);
        model.Start();
        shown.push_back({path});
        const auto player = std::exchange(playSamples, {});
        EXPECT_TRUE(player) << "nobody expects the samples";
        if (!player || !player(model)) return std::nullopt;
        return ChosenSheet{model.chosenName, model.chosenText};
    }

private:
    bool Run(FileDialogModel& model, std::vector<std::string> given) {
        model.Start();
        shown.push_back(std::move(given));
        const auto player = std::exchange(play, {});
        EXPECT_TRUE(player) << "nobody expects the dialog";
        return player && player(model);
    }

    Questions& questions;
};

}  // namespace orvane::test
