#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/help_console.h"
#include "tests/support/tool_run.h"
#include "tests/support/written_files.h"

// orvane-plot: each curve of a sheet as a picture in a file of its own.

namespace orvane::test {
namespace {

constexpr std::string_view fourCurves =
    "a = 1; locus_xy(x,0,1,2,x); locus_polar(t,0,1,3,t);\n"
    "locus_parametric(t,0,1,4,t,t) + locus_parametric(t,0,1,1,t,t);";
constexpr std::string_view oneCurve = "locus_xy(x,0,3,30,x^2)";

ToolResult Plot(const std::string& folder, std::string_view sheet,
                const std::vector<std::string>& options = {}) {
    std::vector<std::string> arguments{"-o", folder};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, sheet);
}

// Exit status 2, nothing on the standard output, and one message that holds all of the words.
void ExpectRefused(const ToolResult& result, std::initializer_list<std::string_view> words) {
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.starts_with("orvane-plot: ")) << result.error;
    EXPECT_TRUE(result.error.ends_with("\n")) << result.error;
    for (const std::string_view word : words) {
        EXPECT_NE(result.error.find(word), std::string::npos)
            << "'" << word << "' is not in: " << result.error;
    }
}

bool Holds(const std::string& bytes, std::string_view text) {
    return bytes.find(text) != std::string::npos;
}

unsigned BigEndian(const std::string& bytes, std::size_t at) {
    unsigned number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number = number * 256 + static_cast<unsigned char>(bytes.at(at + i));
    }
    return number;
}

TEST(PlotProgram, PrintsWhatTheHelpShows) {
    const TemporaryFolder folder;
    const HelpConsole console = ConsoleOfHelp();
    for (const ConsoleFile& file : console.files) folder.Write(file.name, file.text);
    int count = 0;
    for (const ConsoleCommand& command : console.commands) {
        if (command.program != "orvane-plot") continue;
        SCOPED_TRACE(command.place);
        ++count;
        ToolRun run;
        run.arguments = command.arguments;
        run.folder = folder.Path();
        const ToolResult result = RunTool(run);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        EXPECT_TRUE(MatchesOutput(command.output, result.output)) << result.output;
    }
    EXPECT_GE(count, 1);
}

TEST(PlotProgram, NamesPicturesBySentenceAndKind) {
    const TemporaryFolder folder;
    const ToolResult result = Plot(folder.Path(), fourCurves);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.output, folder.Path() + "/2_xy.svg: 3 points\n" + folder.Path() +
                                 "/3_polar.svg: 4 points\n" + folder.Path() +
                                 "/4_parametric.svg: 5 points\n" + folder.Path() +
                                 "/4_parametric_2.svg: 2 points\n");
    EXPECT_EQ(FilesOf(folder.Path()),
              (std::set<std::string>{"2_xy.svg", "3_polar.svg", "4_parametric.svg",
                                     "4_parametric_2.svg"}));
}

struct FormatRow {
    const char* format;
    std::string_view start;
};
constexpr FormatRow formatRows[] = {
    {"svg", "<?xml"}, {"png", "\x89PNG\r\n\x1a\n"}, {"pdf", "%PDF-1."}};

TEST(PlotProgram, WritesEveryFormat) {
    for (const auto& [format, start] : formatRows) {
        SCOPED_TRACE(format);
        const TemporaryFolder folder;
        const ToolResult result = Plot(folder.Path(), oneCurve, {"--format", format});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "");
        const std::string name = std::string("1_xy.") + format;
        EXPECT_EQ(FilesOf(folder.Path()), std::set<std::string>{name});
        EXPECT_TRUE(BytesOfFile(folder.Path() + "/" + name).starts_with(start));
    }
}

struct SizeRow {
    std::vector<std::string> options;
    unsigned width;
    unsigned height;
    const char* viewBox;
    const char* mediaBox;  // in points, three for four pixels
};
const SizeRow sizeRows[] = {
    {{}, 800, 600, "viewBox=\"0 0 800 600\"", "/MediaBox [0 0 600.000000 450.000000]"},
    {{"--size", "400x200"},
     400,
     200,
     "viewBox=\"0 0 400 200\"",
     "/MediaBox [0 0 300.000000 150.000000]"},
    {{"--size", "9x9", "--size", "200x400"},
     200,
     400,
     "viewBox=\"0 0 200 400\"",
     "/MediaBox [0 0 150.000000 300.000000]"},
    {{"--size", "1x1"}, 1, 1, "viewBox=\"0 0 1 1\"", "/MediaBox"},
    {{"--size", "16384x4"},
     16384,
     4,
     "viewBox=\"0 0 16384 4\"",
     "/MediaBox [0 0 12288.000000 3.000000]"},
};

TEST(PlotProgram, DrawsInTheSizeThatIsAskedFor) {
    for (const SizeRow& row : sizeRows) {
        SCOPED_TRACE(row.viewBox);
        const TemporaryFolder folder;
        for (const char* format : {"svg", "png", "pdf"}) {
            std::vector<std::string> options = row.options;
            options.insert(options.end(), {"--format", format});
            EXPECT_EQ(Plot(folder.Path(), oneCurve, options).status, 0);
        }
        EXPECT_TRUE(Holds(BytesOfFile(folder.Path() + "/1_xy.svg"), row.viewBox));
        const std::string png = BytesOfFile(folder.Path() + "/1_xy.png");
        EXPECT_EQ(BigEndian(png, 16), row.width);
        EXPECT_EQ(BigEndian(png, 20), row.height);
        EXPECT_TRUE(Holds(BytesOfFile(folder.Path() + "/1_xy.pdf"), row.mediaBox));
    }
}

TEST(PlotProgram, RefusesOtherSizesAndFormats) {
    const TemporaryFolder folder;
    for (const char* size :
         {"", "800", "800x", "x600", "0x600", "800x0", "-1x5", "+8x6", "16385x1", "1x16385",
          "99999999999999999999x1", "8.5x6", "800x600x1", "800X600", "800 x 600", "axb"}) {
        SCOPED_TRACE(size);
        ExpectRefused(Plot(folder.Path(), oneCurve, {"--size", size}),
                      {"--size", "800x600", "from 1 to 16384", "orvane-plot --help"});
    }
    for (const char* format : {"", "jpg", "SVG", ".svg", "svgz", "csv"}) {
        SCOPED_TRACE(format);
        ExpectRefused(Plot(folder.Path(), oneCurve, {"--format", format}),
                      {"--format", "svg, png and pdf", "orvane-plot --help"});
    }
    EXPECT_TRUE(FilesOf(folder.Path()).empty());
}

TEST(PlotProgram, RefusesACommandLineThatItCanNotRead) {
    ExpectRefused(RunTool({}, oneCurve), {"-o DIR is needed", "orvane-plot --help"});
    ExpectRefused(RunTool({"-"}, oneCurve), {"-o DIR is needed"});
    ExpectRefused(RunTool({"-o"}, oneCurve), {"output needs a folder"});
    ExpectRefused(RunTool({"-o", "/tmp", "--size"}, oneCurve), {"--size"});
    ExpectRefused(RunTool({"-o", "/tmp", "--colour"}, oneCurve),
                  {"there is no option '--colour' here", "Run orvane-plot --help"});
    ExpectRefused(RunTool({"-o", "/tmp", "a", "b"}, oneCurve), {"'b' is one word too many"});
    ExpectRefused(RunTool({"-o", "/tmp", "--bits", "1"}, oneCurve), {"--bits", "from 2 to 53"});
    ExpectRefused(RunTool({"-o", ""}, oneCurve), {"can't be made"});
}

TEST(PlotProgram, ReadsASheetFromAFileOrTheStandardInput) {
    const TemporaryFolder folder;
    const std::string sheet = folder.Write("a.sheet", oneCurve);
    const std::string path = folder.Path() + "/out/1_xy.svg";
    for (const auto& words :
         std::vector<std::vector<std::string>>{{sheet, "-o", folder.Path() + "/out"},
                                               {"--output", folder.Path() + "/out", sheet},
                                               {"-o", folder.Path() + "/out", "-"},
                                               {"-o", folder.Path() + "/out"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        EXPECT_EQ(RunTool(words, oneCurve).output, path + ": 31 points\n");
        EXPECT_TRUE(std::filesystem::remove(path));
    }
    ExpectRefused(RunTool({folder.Path() + "/none", "-o", folder.Path()}),
                  {"/none' can't be read: "});
    ExpectRefused(Plot(folder.Path(), ""), {"Please input formulas for calculation."});
    ExpectRefused(RunTool({.arguments = {"-o", folder.Path()}, .inputClosed = true}),
                  {"the standard input can't be read"});
}

TEST(PlotProgram, TakesTheOptionsOfARun) {
    const TemporaryFolder folder;
    EXPECT_EQ(
        Plot(folder.Path(), "locus_xy(x,0,1,999,x)", {"--screen", "10x10", "--locus-fine", "4"})
            .output,
        folder.Path() + "/1_xy.svg: 2 points\n");
    // The precision is that of the labels.
    const std::string_view third = "locus_xy(x,-1/3,2/3,10,x)";
    Plot(folder.Path(), third);
    EXPECT_TRUE(Holds(BytesOfFile(folder.Path() + "/1_xy.svg"), ">+0.67<"));
    Plot(folder.Path(), third, {"--precision", "5"});
    EXPECT_TRUE(Holds(BytesOfFile(folder.Path() + "/1_xy.svg"), ">+0.66667<"));
    EXPECT_TRUE(Holds(BytesOfFile(folder.Path() + "/1_xy.svg"), ">-0.33333<"));
    EXPECT_EQ(Plot(folder.Path(), third, {"--precision", "9999999999999"}).status, 0);
    EXPECT_EQ(Plot(folder.Path(), third, {"--precision", "-9999999999999"}).status, 0);
}

TEST(PlotProgram, DrawsWhatAFailedSweepRecorded) {
    const TemporaryFolder folder;
    const ToolResult result = Plot(folder.Path(), "locus_xy(x,-2,2,4,1/x)");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, folder.Path() + "/1_xy.svg: 2 points\n");
    EXPECT_TRUE(result.error.starts_with("orvane-plot: E009-41 sentence  1: function \"divide\""))
        << result.error;
    const std::string picture = BytesOfFile(folder.Path() + "/1_xy.svg");
    EXPECT_TRUE(Holds(picture, "<polyline"));
    EXPECT_TRUE(Holds(picture, ">-2<"));
    EXPECT_TRUE(Holds(picture, ">-1<"));
}

TEST(PlotProgram, DrawsACurveWithoutPoints) {
    const TemporaryFolder folder;
    const ToolResult result = Plot(folder.Path(), "locus_polar(t,0,1,4,5,1)");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, folder.Path() + "/1_polar.svg: 0 points\n");
    EXPECT_TRUE(
        Holds(BytesOfFile(folder.Path() + "/1_polar.svg"), "Last angle: -0.25 or -0.08*pi"));
}

TEST(PlotProgram, WritesNothingWhereASheetHasNoCurves) {
    const TemporaryFolder folder;
    const std::string deeper = folder.Path() + "/deeper";
    const ToolResult result = Plot(deeper, "1");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.error, "orvane-plot: the sheet has no curves, so nothing was written\n");
    const ToolResult broken = Plot(deeper, "locus_xy(x,0,1,4,x);1+");
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(Holds(broken.error, "orvane-plot: C002-10"));
    EXPECT_FALSE(std::filesystem::exists(deeper));
}

TEST(PlotProgram, MakesTheFolderAndReplacesWhatIsThere) {
    const TemporaryFolder folder;
    const std::string deeper = folder.Path() + "/a/b";
    EXPECT_EQ(Plot(deeper, oneCurve).status, 0);
    const std::string before = BytesOfFile(deeper + "/1_xy.svg");
    EXPECT_EQ(Plot(deeper, "locus_xy(x,-1,1,2,x)").status, 0);
    EXPECT_NE(BytesOfFile(deeper + "/1_xy.svg"), before);
    EXPECT_EQ(FilesOf(deeper), std::set<std::string>{"1_xy.svg"});
}

TEST(PlotProgram, TellsWhyAPictureCanNotBeWritten) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file", "");
    ExpectRefused(Plot(file, oneCurve), {file, "can't be made"});
    ExpectRefused(Plot("/proc/nowhere", oneCurve), {"/proc/nowhere", "can't be made"});
    // What stands in the place of the picture is no file.
    std::filesystem::create_directory(folder.Path() + "/1_xy.svg");
    ExpectRefused(Plot(folder.Path(), oneCurve), {"1_xy.svg' can't be written: ", "plain file"});
    std::filesystem::create_symlink("/dev/full", folder.Path() + "/1_xy.png");
    ExpectRefused(Plot(folder.Path(), oneCurve, {"--format", "png"}),
                  {"1_xy.png' can't be written: ", "plain file"});
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    const TemporaryFolder other;
    ExpectRefused(Plot(other.Path() + "/\xe9", oneCurve), {"can't be written", "not UTF-8"});
}

TEST(PlotProgram, LeavesAPictureAloneThatItMayNotReplace) {
    const TemporaryFolder folder;
    folder.Write("1_xy.svg", "before");
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0555));
    const ToolResult result =
        RunTool({.arguments = {"-o", folder.Path()}, .input = oneCurve, .withoutRights = true});
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0755));
    ExpectRefused(result, {"1_xy.svg' can't be written: "});
    EXPECT_EQ(BytesOfFile(folder.Path() + "/1_xy.svg"), "before");
    EXPECT_EQ(FilesOf(folder.Path()), std::set<std::string>{"1_xy.svg"});
}

TEST(PlotProgram, DrawsTheSameWithoutADisplayAndUnderEveryDesktop) {
    unsetenv("DISPLAY");
    unsetenv("WAYLAND_DISPLAY");
    unsetenv("XDG_RUNTIME_DIR");
    unsetenv("HOME");
    using Environment = std::vector<std::pair<std::string, std::string>>;
    const Environment environments[] = {
        {},
        {{"LC_ALL", "C"}, {"LANG", "C"}},
        {{"LC_ALL", "de_DE.UTF-8"}},
        {{"LC_ALL", "xx_YY.nosuch"}},
        {{"QT_QPA_PLATFORM", "xcb"}, {"DISPLAY", ":99999"}},
        {{"QT_QPA_PLATFORM", "nosuch"}},
        {{"QT_SCALE_FACTOR", "3"}, {"QT_FONT_DPI", "200"}, {"QT_STYLE_OVERRIDE", "Windows"}},
        {{"QT_QPA_PLATFORMTHEME", "gtk3"}, {"XDG_CURRENT_DESKTOP", "GNOME"}},
        {{"HOME", "/nowhere"}},
        {{"QT_FATAL_WARNINGS", "1"}},
    };
    for (const std::string format : {"svg", "png"}) {
        std::string plain;
        for (const Environment& environment : environments) {
            SCOPED_TRACE(testing::PrintToString(environment));
            const TemporaryFolder folder;
            const ToolResult result =
                RunTool({.arguments = {"-o", folder.Path(), "--format", format},
                         .input = "locus_polar(t, 0, 6.5, 100, 1234.5 * t, 5000)",
                         .environment = environment});
            EXPECT_EQ(result.status, 0);
            EXPECT_EQ(result.error, "");
            const std::string picture = BytesOfFile(folder.Path() + "/1_polar." + format);
            if (plain.empty()) plain = picture;
            EXPECT_TRUE(picture == plain);
        }
    }
}

TEST(PlotProgram, TellsThatThereIsNoFont) {
    const TemporaryFolder folder;
    const std::string fonts = folder.Write(
        "fonts.conf",
        "<?xml version=\"1.0\"?><fontconfig><cachedir>/nowhere</cachedir></fontconfig>");
    for (const char* format : {"svg", "png", "pdf"}) {
        SCOPED_TRACE(format);
        const ToolResult result = RunTool({.arguments = {"-o", folder.Path(), "--format", format},
                                           .input = "locus_xy(x,0,1,4,x); locus_xy(x,0,1,4,x)",
                                           .environment = {{"FONTCONFIG_FILE", fonts}}});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.error, "orvane-plot: no font is installed, so the labels can't be read\n");
        EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 2);
    }
}

TEST(PlotProgram, TellsAboutItself) {
    const ToolResult help = RunTool({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.error, "");
    for (const char* word : {"orvane-plot", "-o,--output DIR", "--format FORMAT", "--size WxH",
                             "--precision N", "800x600", "Exit status: 0 fine"}) {
        EXPECT_TRUE(Holds(help.output, word)) << word << " is not in: " << help.output;
    }
    EXPECT_EQ(RunTool({"--version"}).output, "orvane-plot " ORVANE_VERSION "\n");
    const TemporaryFolder folder;
    for (const auto output : {ToolRun::Output::fullDevice, ToolRun::Output::closed}) {
        ExpectRefused(
            RunTool({.arguments = {"-o", folder.Path()}, .input = oneCurve, .output = output}),
            {"the output can't be written"});
        ExpectRefused(RunTool({.arguments = {"--help"}, .output = output}), {"output"});
    }
}

TEST(PlotProgram, DrawsTheCurvesOfTheSamples) {
    int pictures = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ORVANE_SAMPLES_FOLDER)) {
        if (entry.path().extension() != ".sheet") continue;
        SCOPED_TRACE(entry.path().string());
        const TemporaryFolder folder;
        const ToolResult result = RunTool({entry.path().string(), "-o", folder.Path()});
        EXPECT_EQ(result.status, 0);
        const auto lines = std::count(result.output.begin(), result.output.end(), '\n');
        EXPECT_EQ(FilesOf(folder.Path()).size(), static_cast<std::size_t>(lines));
        pictures += static_cast<int>(lines);
    }
    EXPECT_GE(pictures, 10);
}

}  // namespace
}  // namespace orvane::test
