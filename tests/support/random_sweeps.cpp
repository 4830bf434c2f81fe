#include "tests/support/random_sweeps.h"

#include <algorithm>
#include <initializer_list>

#include "core/number_literal.h"
#include "functions/column_kernels.h"
#include "functions/keyword_table.h"

namespace orvane::test {

namespace {

struct NamedText {
    std::string_view name;
    std::string_view formula;
};

// Formulas in front of the sweep. The first ones are plain numbers.
constexpr NamedText formulas[] = {
    {"half", "0.5"},
    {"some", "2.5"},
    {"low", "neg(0.75)"},
    {"nought", "neg(0)"},
    {"great", "pow(10,300)"},
    {"small", "pow(10,neg(320))"},
    {"endless", "series(i,1,1,2,1.5*pow(10,308))"},
    {"nothing", "1.5*pow(10,308)*10-1.5*pow(10,308)*10"},
    {"pair", "point(1,2)"},
    {"strange", "complex(1,2)"},
    {"square", "matrix(point(1,2),point(3,4))"},
};
constexpr std::uint32_t numberFormulas = 8;

// Each '$' of the form takes the next argument, or the last one again.
std::string Fill(std::string_view form, std::initializer_list<std::string> arguments) {
    std::string text;
    const std::string* argument = arguments.begin();
    for (const char character : form) {
        if (character != '$') {
            text += character;
            continue;
        }
        text += *argument;
        if (argument + 1 != arguments.end()) ++argument;
    }
    return text;
}

std::string Text(double number) {
    const std::string text = FormatStripped(number, 6, false);
    return number < 0.0 ? Fill("($)", {text}) : text;
}

// The keywords whose bodies turn numbers into a number.
const std::vector<const KeywordEntry*>& NumberKeywords() {
    static const std::vector<const KeywordEntry*> keywords = [] {
        std::vector<const KeywordEntry*> found;
        for (const KeywordEntry& row : keywordRows) {
            if (row.body.scalar != nullptr) found.push_back(&row);
        }
        return found;
    }();
    return keywords;
}

}  // namespace

std::string RandomSweeps::Sheet(const SweepWords& sweep) {
    usedFormulas.clear();
    variables.assign(1, 'x');
    hasInnerSweeps = OneIn(4);
    const Grid grid = RandomGrid(sweep);
    outerGrid = grid;
    const double width = grid.step * grid.steps * sweep.samplesPerStep;
    const double third = sweep.stepIsGiven ? grid.step : grid.lower + width;
    std::string call = Fill("$(x,$,$,$", {std::string(sweep.name), Text(grid.lower), Text(third),
                                          std::to_string(grid.steps)});
    for (int i = 0; i < sweep.bodies; ++i) call += Fill(",$", {Body(grid)});
    if (sweep.hasOption && !OneIn(3)) {
        constexpr const char* options[] = {"0", "1", "(-1)", "2.5", "20", "1/0", "point(1,2)"};
        call += Fill(",$", {options[Below(OneIn(20) ? 7 : 5)]});
    }

    std::sort(usedFormulas.begin(), usedFormulas.end());
    usedFormulas.erase(std::unique(usedFormulas.begin(), usedFormulas.end()), usedFormulas.end());
    std::string sheet;
    for (const std::size_t at : usedFormulas) {
        sheet += Fill("$=$;", {std::string(formulas[at].name), std::string(formulas[at].formula)});
    }
    return sheet + Fill("found=$);", {call});
}

RandomSweeps::Grid RandomSweeps::RandomGrid(const SweepWords& sweep) {
    constexpr int block = columnLength;
    constexpr int counts[] = {1,
                              2,
                              15,
                              31,
                              32,
                              33,
                              127,
                              128,
                              129,
                              499,
                              500,
                              501,
                              block - 2,
                              block - 1,
                              block,
                              block + 1,
                              block / 2 - 1,
                              block / 2,
                              2 * block,
                              2 * block - 1,
                              2 * block + 1,
                              600};
    constexpr double steps[] = {0.25, 0.5,  1.0, 0.125, 2.0,  -0.25,
                                -1.0, -0.5, 0.0, 0.1,   -0.3, 64.0};
    Grid grid;
    const int most = hasInnerSweeps && !OneIn(3) ? 70 : sweep.mostSteps;
    grid.steps = OneIn(3) ? OneOf(counts) : 1 + static_cast<int>(Below(150));
    grid.steps = std::min(grid.steps, most);
    grid.step = OneOf(steps);
    grid.lower = (static_cast<double>(Below(161)) - 80.0) * 0.25;
    if (OneIn(3)) grid.lower = OneIn(2) ? 0.0 : 1.0;
    grid.places = grid.steps * sweep.samplesPerStep + (sweep.stepIsGiven ? 0 : 1);
    return grid;
}

std::string RandomSweeps::Body(const Grid& grid) {
    const std::string body = Term(static_cast<int>(Below(4)));
    if (!OneIn(3)) return body;
    constexpr const char* forms[] = {"($)+$", "($)*$", "$-($)", "$+($)"};
    const bool bodyIsFirst = OneIn(2);
    const std::string failing = FailingTerm(grid);
    return Fill(forms[bodyIsFirst ? Below(2) : 2 + Below(2)],
                {bodyIsFirst ? body : failing, bodyIsFirst ? failing : body});
}

// Fails at one place of the grid, or from there on: at the ends, at the borders of blocks, or
// anywhere.
std::string RandomSweeps::FailingTerm(const Grid& grid) {
    constexpr const char* forms[] = {
        "1/(x-$)",
        "inv(x-$)",
        "sqrt($-x)",
        "ln(abs(x-$))",
        "exp((x-$)*1000)",
        "log10(if(x==$,0,3))",
        "if(x<$,x,1/0)",
        "if(x-$,1,1/(x-x),2)",
        "if(x==$,bit_and(0.5,1,8),1)",
        "if(x==$,factorial(-1),x)",
        "if(x==$,days(2001,2,30),2)",
        "if(x==$,point(1,2),1)",
        "if(x>=$,if(x>=$,asin(2),x),acos(if(x<$,1,2)))",
        "(pow(10,300)*if(x==$,pow(10,300),1))",
    };
    const int last = grid.places - 1;
    constexpr int block = columnLength;
    const int borders[] = {0,         1,    31,        32,           127,       128,
                           129,       500,  block - 1, block,        block + 1, 2 * block - 1,
                           2 * block, last, last - 1,  2 * block + 1};
    const auto places = static_cast<std::uint32_t>(grid.places);
    int place = OneIn(2) ? OneOf(borders) : static_cast<int>(Below(places));
    place = std::clamp(place, 0, last);
    return Fill(OneOf(forms), {Text(place * grid.step + grid.lower)});
}

std::string RandomSweeps::Term(int depth) {
    if (depth <= 0) return Leaf();
    const std::uint32_t kind = Below(32);
    if (hasInnerSweeps && variables.size() == 1 && OneIn(3)) return InnerSweep(depth - 1);
    if (kind < 13) return Operation(depth - 1);
    if (kind < 24) return Call(depth - 1);
    if (kind < 28) return Choice(depth - 1);
    if (kind < 30) return Fill("($)", {Term(depth - 1)});
    if (kind < 31 && hasInnerSweeps) return InnerSweep(depth - 1);
    return OneIn(2) ? Oddity(depth - 1) : Operation(depth - 1);
}

std::string RandomSweeps::Operation(int depth) {
    constexpr const char* forms[] = {
        "(($)+($))",  "(($)-($))",  "(($)*($))",  "(($)/($))",  "(($)^($))",  "(($)%($))",
        "(($)<<($))", "(($)>>($))", "(($)==($))", "(($)<>($))", "(($)>($))",  "(($)<($))",
        "(($)>=($))", "(($)<=($))", "plus($,$)",  "minus($,$)", "times($,$)", "divide($,$)",
        "(-($))",     "neg($)",     "abs($)",     "($)!",
    };
    const bool isPlain = OneIn(2);  // one of the first four
    const std::string left = Term(depth);
    return Fill(isPlain ? forms[Below(4)] : OneOf(forms), {left, Term(depth)});
}

std::string RandomSweeps::Call(int depth) {
    const auto& keywords = NumberKeywords();
    const KeywordEntry& row = *keywords[Below(static_cast<std::uint32_t>(keywords.size()))];
    const std::string name(row.name);
    int count = row.minParams;
    if (row.maxParams < 0) count += static_cast<int>(Below(4));
    if (OneIn(200)) count = std::max(1, count + (OneIn(2) ? 1 : -1));
    if (row.group != KeywordGroup::bits || OneIn(4)) {
        return Fill("$($)", {name, Parameters(count, depth)});
    }
    // Whole numbers, so that most of the bit functions have something to do.
    if (count == 1) return Fill("$(2+abs(int($))%40)", {name, Term(depth)});
    constexpr const char* widths[] = {"8", "16", "0", "32", "53", "2", "60"};
    std::string words;
    for (int i = 0; i + 1 < count; ++i) words += Fill("abs(int($)),", {Term(depth)});
    return Fill("$($$)", {name, words, OneOf(widths)});
}

std::string RandomSweeps::Choice(int depth) {
    constexpr const char* conditions[] = {"$<($)", "$-($)", "$==($)"};
    const std::string left = Leaf();
    const std::string simple = Fill(OneOf(conditions), {left, Leaf()});
    const std::string condition = OneIn(3) ? Term(depth) : simple;
    return Fill("if($,$)", {condition, Parameters(OneIn(3) ? 3 : 2, depth)});
}

// What is no plain number, or has no value, or is no call at all.
std::string RandomSweeps::Oddity(int depth) {
    constexpr const char* forms[] = {
        "point($,$)", "complex($,$)",      "($,$,$)",         "length(point($,$))",
        "abs($,$)",   "if($,$)",           "vector_row($)",   "polygon_edges($,$,$)",
        "unset",      "if($,unset,$)",     "if(unset,$,$)",   "matrix_det(point(1,x),point($,$))",
        "sum_n($)",   "unknown_word($,$)", "abs(point($,$))", "dot_product(point(1,x),point($,$))",
    };
    if (OneIn(8)) {
        usedFormulas.push_back(numberFormulas + Below(3));
        return std::string(formulas[usedFormulas.back()].name);
    }
    const std::string left = Term(depth);
    return Fill(OneOf(forms), {left, Term(depth)});
}

// Now and then it records something, has a variable with the name of the outer one, or fails where
// that one has some value.
std::string RandomSweeps::InnerSweep(int depth) {
    constexpr const char* names[] = {"series",
                                     "product",
                                     "integral_area_xy",
                                     "integral_area_polar",
                                     "integral_curve_xy",
                                     "integral_curve_polar"};
    constexpr const char* pairNames[] = {"integral_area_parametric_xy",
                                         "integral_area_parametric_polar",
                                         "integral_curve_parametric"};
    constexpr const char* oddNames[] = {"locus_xy", "equation_root"};
    if (variables.size() > 2) return Leaf();
    const bool isOuter = variables.size() == 1;
    const std::string variable = OneIn(6) ? "x" : isOuter ? "y" : "z";
    const bool hasTwoBodies = OneIn(8);
    const std::string name = hasTwoBodies ? OneOf(pairNames)
                             : OneIn(24)  ? OneOf(oddNames)
                                          : OneOf(names);
    const std::string lower = OneIn(2) ? "0" : Leaf();
    const int most = std::clamp(6000 / outerGrid.places, 1, 150);
    const std::string count = InnerCount(isOuter ? most : 3);
    variables.push_back(variable[0]);
    const auto body = [&] { return isOuter && OneIn(8) ? FailingTerm(outerGrid) : Term(depth); };
    std::string bodies = body();
    if (hasTwoBodies) bodies += Fill(",$", {body()});
    variables.pop_back();
    const std::string step = OneIn(4) ? Leaf() : "1";
    return Fill(OneIn(4) ? "abs($($,$,$,$,$))" : "$($,$,$,$,$)",
                {name, variable, lower, step, count, bodies});
}

// A count of steps that may depend on the outer variable; what is no count, or a long one, at one
// place alone.
std::string RandomSweeps::InnerCount(int most) {
    constexpr int counts[] = {1, 2, 3, 5, 16, 31, 32, 40, 140};
    const std::string count = std::to_string(std::min(OneOf(counts), most));
    const auto places = static_cast<std::uint32_t>(outerGrid.places);
    const std::string place =
        Text(static_cast<double>(Below(places)) * outerGrid.step + outerGrid.lower);
    if (OneIn(4)) return Fill("1+abs(int(x))%$", {count});
    if (OneIn(16)) {
        constexpr const char* oddCounts[] = {"0", "1.5", "(-1)", "y", "600", "40000"};
        return Fill("if(x==$,$,$)", {place, oddCounts[Below(OneIn(8) ? 6 : 5)], count});
    }
    return OneIn(12) ? Fill("if(x>$,$,1)", {place, count}) : count;
}

std::string RandomSweeps::Leaf() {
    constexpr const char* numbers[] = {"0",    "1",  "2",    "3",         "0.5",
                                       "0.1",  "10", "100",  "1.0000001", "0.333333333333333",
                                       "1000", "7",  "45",   "2000",      "9007199254740993",
                                       "pi",   "e",  "(-1)", "(-2.5)",    "170"};
    const std::uint32_t kind = Below(16);
    if (kind < 9) {
        const auto count = static_cast<std::uint32_t>(variables.size());
        return std::string(1, variables[OneIn(2) ? count - 1 : Below(count)]);
    }
    if (kind < 14) return OneOf(numbers);
    usedFormulas.push_back(Below(numberFormulas));
    return std::string(formulas[usedFormulas.back()].name);
}

std::string RandomSweeps::Parameters(int count, int depth) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        if (i > 0) text += ",";
        text += Term(depth);
    }
    return text;
}

}  // namespace orvane::test
