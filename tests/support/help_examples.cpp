#include "tests/support/help_examples.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <pugixml.hpp>
#include <utility>

#include "cli/cli_options.h"
#include "cli/sheet_run.h"

namespace orvane::cli {

const char* const programName = "orvane-cli";

}  // namespace orvane::cli

namespace orvane::test {

namespace {

std::size_t LineAt(std::string_view page, std::size_t at) {
    const std::string_view ahead = page.substr(0, at);
    return static_cast<std::size_t>(std::count(ahead.begin(), ahead.end(), '\n')) + 1;
}

std::string WithoutEndOfLines(std::string_view text) {
    const std::size_t last = text.find_last_not_of('\n');
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

// Pages may begin such a text on a line of its own.
std::string TextOf(const pugi::xml_node& element) {
    std::string text;
    for (const pugi::xml_node& child : element.children()) text += child.value();
    if (text.starts_with('\n')) text.erase(0, 1);
    return text;
}

bool HoldsTextAlone(const pugi::xml_node& element) {
    const auto children = element.children();
    return std::all_of(children.begin(), children.end(), [](const pugi::xml_node& child) {
        return child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata;
    });
}

bool HasClass(const pugi::xml_node& element, std::string_view name) {
    return std::string_view(element.name()) == "pre" && element.attribute("class").value() == name;
}

pugi::xml_node NextElement(pugi::xml_node node) {
    do {
        node = node.next_sibling();
    } while (node && node.type() != pugi::node_element);
    return node;
}

pugi::xml_node PreviousElement(pugi::xml_node node) {
    do {
        node = node.previous_sibling();
    } while (node && node.type() != pugi::node_element);
    return node;
}

// Behind the ">" of the tag whose name stands at `at`; none of an element without content.
std::optional<std::size_t> BehindTag(std::string_view page, std::size_t at) {
    char quote = '\0';
    for (; at < page.size(); ++at) {
        const char c = page[at];
        if (quote != '\0') {
            if (c == quote) quote = '\0';
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            if (page[at - 1] == '/') return std::nullopt;
            return at + 1;
        }
    }
    return std::nullopt;
}

class ExampleReader {
public:
    explicit ExampleReader(std::string_view page) : page(page) {}

    HelpExamples Read() {
        pugi::xml_document document;
        const pugi::xml_parse_result parsed = document.load_buffer(
            page.data(), page.size(), pugi::parse_default, pugi::encoding_utf8);
        if (!parsed) {
            AddFault(static_cast<std::size_t>(parsed.offset), parsed.description());
            return std::move(found);
        }
        for (const pugi::xpath_node& place : document.select_nodes("//pre")) {
            const pugi::xml_node element = place.node();
            if (HasClass(element, "sheet")) AddExample(element);
            if (HasClass(element, "report") && !HasClass(PreviousElement(element), "sheet")) {
                AddFault(OffsetOf(element), "a report without a sheet in front of it");
            }
        }
        return std::move(found);
    }

private:
    static std::size_t OffsetOf(const pugi::xml_node& element) {
        return static_cast<std::size_t>(element.offset_debug());
    }

    void AddFault(std::size_t at, const std::string& text) {
        found.faults.push_back(std::to_string(LineAt(page, at)) + ": " + text);
    }

    void AddExample(const pugi::xml_node& sheet) {
        const pugi::xml_node report = NextElement(sheet);
        if (!HasClass(report, "report")) {
            return AddFault(OffsetOf(sheet), "a sheet without a report behind it");
        }
        if (!HoldsTextAlone(sheet) || !HoldsTextAlone(report)) {
            return AddFault(OffsetOf(sheet), "an example with tags in it");
        }
        const std::optional<std::size_t> from = BehindTag(page, OffsetOf(report));
        if (!from) return AddFault(OffsetOf(report), "write an empty report with both its tags");
        HelpExample example;
        example.line = LineAt(page, OffsetOf(sheet));
        example.sheet = TextOf(sheet);
        example.options = sheet.attribute("data-options").value();
        example.report = WithoutEndOfLines(TextOf(report));
        example.reportFrom = *from;
        example.reportTo = page.find("</pre", *from);
        found.examples.push_back(std::move(example));
    }

    std::string_view page;
    HelpExamples found;
};

// The options of a run; nothing where the tool would refuse them.
std::optional<cli::RunOptions> OptionsFrom(const std::string& text) {
    cli::RunOptions options;
    CLI::App app;
    cli::AddRunOptions(app, options);
    try {
        app.parse(text);
    } catch (const CLI::ParseError&) {
        return std::nullopt;
    }
    if (options.file != "-") return std::nullopt;
    return options;
}

}  // namespace

HelpExamples ExamplesOf(std::string_view page) { return ExampleReader(page).Read(); }

HelpReport ReportOf(const HelpExample& example) {
    const std::optional<cli::RunOptions> options = OptionsFrom(example.options);
    if (!options) return {"", "no options of a run: " + example.options};
    HelpReport report{"", "nothing to calculate"};
    RunWatchers watchers;
    watchers.finished = [&report](const FinishedRun& run) {
        std::string text = run.texts.positionText + run.texts.resultText;
        std::erase(text, '\r');
        report = {WithoutEndOfLines(text), ""};
    };
    cli::RunSheetText(example.sheet, *options, watchers);
    return report;
}

}  // namespace orvane::test
