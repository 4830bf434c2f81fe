#include <CLI/CLI.hpp>
#include <QApplication>
#include <QFile>
#include <QFontInfo>
#include <array>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "cli/cli_options.h"
#include "cli/command_line.h"
#include "cli/curves_run.h"
#include "locus/plot_pictures.h"
#include "windows/look.h"

namespace orvane::cli {

namespace {

struct PlotOptions {
    RunOptions run;
    std::optional<std::string> folder;
    std::string format = "svg";
    int width = 800;
    int height = 600;
};

// What the toolkit has to say is nothing to the user, except why it ends the program.
void HearToolkit(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtFatalMsg) return;
    PrintError("the pictures can't be drawn: " + message.toStdString());
    std::_Exit(exitUsage);
}

// The toolkit as pictures need it: without a screen, and the same under every desktop and locale.
class Toolkit {
public:
    Toolkit() {
        qInstallMessageHandler(HearToolkit);
        PrepareLook();
        application = std::make_unique<QApplication>(count, words.data());
        ApplyLook(*application);
        // The toolkit draws boxes then, and tells nobody.
        if (QFontInfo(InterfaceFont()).family().isEmpty()) {
            PrintError("no font is installed, so the labels can't be read");
        }
    }

private:
    // Ahead of the application object, which reads these once.
    struct Surroundings {
        Surroundings() {
            for (const char* name :
                 {"QT_QPA_PLATFORMTHEME", "QT_STYLE_OVERRIDE", "QT_FONT_DPI", "QT_SCALE_FACTOR",
                  "QT_SCREEN_SCALE_FACTORS", "QT_FATAL_WARNINGS"}) {
                qunsetenv(name);
            }
            qputenv("QT_QPA_PLATFORM", "offscreen");
            qputenv("LC_ALL", "C.UTF-8");
        }
    };

    Surroundings surroundings;
    std::string name = programName;
    std::array<char*, 2> words{name.data(), nullptr};
    int count = 1;
    std::unique_ptr<QApplication> application;
};

bool WritePicture(const PlotOptions& options, const LocusSet& curve, const std::string& path,
                  std::string& reason) {
    const QString name = QFile::decodeName(path.c_str());
    if (QFile::encodeName(name) != path.c_str()) {
        reason = "its name is not UTF-8";
        return false;
    }
    const std::optional<PictureFormat> format = PictureFormatOf(name);
    if (!format) return false;
    const std::optional<QString> failure =
        SavePlotPicture(curve, QSize(options.width, options.height),
                        options.run.Parameters().floatPrecision, *format, name);
    if (failure) reason = failure->toStdString();
    return !failure;
}

int DrawCurves(const PlotOptions& options) {
    // Asked here and not by the parser, which would see this before a word that is spelled wrong.
    if (!options.folder) {
        PrintError("-o DIR is needed\nRun " + std::string(programName) +
                   " --help to see what there is.");
        return exitUsage;
    }
    // Made for the first picture: a sheet that has none needs no toolkit.
    std::unique_ptr<Toolkit> toolkit;
    const auto writePicture = [&](const LocusSet& curve, const std::string& path,
                                  std::string& reason) {
        if (!toolkit) toolkit = std::make_unique<Toolkit>();
        return WritePicture(options, curve, path, reason);
    };
    return RunForCurves(options.run, *options.folder, "." + options.format, writePicture);
}

void AddPictureOptions(CLI::App& app, PlotOptions& options) {
    app.add_option("-o,--output", options.folder,
                   "The folder for the pictures, such as 3_polar.svg of sentence 3")
        ->take_last()
        ->type_name("folder")
        ->option_text("DIR (needed)");
    const auto readFormat = [&options](const std::string& text) {
        if (text != "svg" && text != "png" && text != "pdf") {
            throw CLI::ValidationError("--format", "'" + text + "' is none of svg, png and pdf");
        }
        options.format = text;
    };
    app.add_option_function<std::string>("--format", readFormat, "svg, png or pdf (default: svg)")
        ->take_last()
        ->type_name("format: svg, png or pdf")
        ->option_text("FORMAT");
    const auto readSize = [&options](const std::string& text) {
        if (ReadSize(text, longestPictureSide, options.width, options.height)) return;
        throw CLI::ValidationError(
            "--size", "'" + text + "' is no size such as 800x600 with sides from 1 to " +
                          std::to_string(longestPictureSide));
    };
    app.add_option_function<std::string>("--size", readSize,
                                         "Pixels of each picture (default: 800x600)")
        ->take_last()
        ->type_name("size such as 800x600")
        ->option_text("WxH");
}

constexpr const char* statusText =
    "Exit status: 0 fine, 1 the sheet has an error, 2 wrong usage, an unreadable file, an empty\n"
    "sheet or an output that can't be written, 3 the time limit is over.";

int Run(int count, char** words) {
    CLI::App app("Draws the curves of a sheet of formulas, each as a picture.", programName);
    AddVersion(app);
    app.formatter(std::make_shared<HelpFormatter>());
    app.footer(statusText);
    PlotOptions options;
    AddPictureOptions(app, options);
    AddRunOptions(app, options.run);
    Action action;
    app.callback([&] { action = [&options] { return DrawCurves(options); }; });
    return RunCommandLine(app, action, count, words);
}

}  // namespace

const char* const programName = "orvane-plot";

}  // namespace orvane::cli

int main(int count, char** words) { return orvane::cli::Run(count, words); }
