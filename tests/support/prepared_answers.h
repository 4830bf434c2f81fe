#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "storage/questions.h"

namespace orvane::test {

// Answers each question by the next one of a list and keeps what was asked, with the buttons in
// front of it. A question without an answer fails the test.
class PreparedAnswers : public Questions {
public:
    std::deque<Answer> answers;

    void ShowMessage(std::string_view message) override { Record("OK", message); }
    bool Confirm(std::string_view question) override {
        Record("Confirm", question);
        return Next() == Answer::yes;
    }
    bool AskYesNo(std::string_view question) override {
        Record("Yes No", question);
        return Next() == Answer::yes;
    }
    Answer AskYesNoCancel(std::string_view question) override {
        Record("Yes No Cancel", question);
        return Next();
    }

    // What was asked since this was asked last.
    std::vector<std::string> Asked() { return std::exchange(asked, {}); }

private:
    void Record(std::string_view buttons, std::string_view text) {
        std::string& question = asked.emplace_back("[");
        question += buttons;
        question += "] ";
        question += text;
    }
    Answer Next() {
        if (answers.empty()) {
            ADD_FAILURE() << "no answer to " << asked.back();
            return Answer::cancel;
        }
        const Answer next = answers.front();
        answers.pop_front();
        return next;
    }

    std::vector<std::string> asked;
};

}  // namespace orvane::test
