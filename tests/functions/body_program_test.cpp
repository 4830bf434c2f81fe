#include "functions/body_program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "functions/body_program_builder.h"
#include "tests/functions/family_call.h"
#include "tests/functions/sweep_body.h"

namespace orvane {
namespace {

using test::SameBits;
using test::SameNumber;
using test::SweepBody;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

constexpr std::string_view formulasInFront =
    "two=2;endless=series(i,1,1,2,1.5*pow(10,308));nothing=endless-endless;pair=point(1,2);"
    "strange=complex(1,2);single=vector_row(7);";

std::unique_ptr<BodyProgram> ProgramOf(SweepBody& body) {
    return BodyProgramBuilder::Build(body.family, body.Node(), "x");
}

struct CoverRow {
    const char* body;
    bool isCovered;
};
constexpr CoverRow coverRows[] = {
    // single numbers
    {"x", true},
    {"3", true},
    {"neg(3)", true},
    {"two", true},
    {"endless", true},
    {"nothing", true},
    {"single", true},
    {"x*two+1", true},
    {"((x))", true},
    {"(x)*(x+(1))", true},
    {"|x|", true},
    {"x!", true},
    {"-x^2%3", true},
    {"x<<2", true},
    {"x>=2", true},
    {"max(x)", true},
    {"median(x,2,3,x,x*x)", true},
    {"bit_and(x,7,8)", true},
    {"max_int(x)", true},
    {"days(2000,x,1)", true},
    {"if(x,1,2)", true},
    {"if(x,1,2,x)", true},
    {"if(if(x,0,1),if(x,x,2),sin(x))", true},
    // other values
    {"pair", false},
    {"strange", false},
    {"point(x,1)", false},
    {"(x,1)", false},
    {"complex(x,1)", false},
    {"vector_row(x)", false},
    {"length(x)", false},
    {"matrix_det(point(x))", false},
    {"abs(x,2)", false},
    {"if(x,1,pair)", false},
    {"if(pair,1,x)", false},
    {"x+pair", false},
    // no value
    {"unset", false},
    {"x*unset", false},
    {"if(x,1,unset)", false},
    // wrong counts and unknown words
    {"sin(x,1)", false},
    {"pow(x)", false},
    {"plus(x,1,2)", false},
    {"neg(x,1)", false},
    {"if(x,1)", false},
    {"if(x,1,2,3,4)", false},
    {"unknown_word(x)", false},
    {"sin(unknown_word(x))", false},
    // The bit functions count their parameters themselves.
    {"bit_and(x,7)", true},
    // sweeps inside
    {"series(y,1,1,3,y)", false},
    {"x+integral_area_xy(y,0,x,3,y)", false},
    {"if(x,1,locus_xy(y,0,1,2,y))", false},
};

TEST(BodyProgramBuilder, CoversBodiesOfSingleNumbers) {
    for (const auto& [text, isCovered] : coverRows) {
        SCOPED_TRACE(text);
        SweepBody body(text, formulasInFront);
        ASSERT_EQ(body.sheet.errorText, "");
        EXPECT_EQ(ProgramOf(body) != nullptr, isCovered);
    }
}

// The variable of a sweep further out has a value once that sweep runs.
TEST(BodyProgramBuilder, CoversVariablesThatHaveAValue) {
    SweepBody body("x*y+y");
    EXPECT_EQ(ProgramOf(body), nullptr);
    ExpandVariable(body.Node(), "y", 0.1);
    const auto program = ProgramOf(body);
    ASSERT_NE(program, nullptr);
    alignas(64) std::array<double, columnLength> x{};
    x[0] = 0.7;
    SideFold nothing;
    const double* const values = program->Run(x.data(), 1, nothing);
    ASSERT_NE(values, nullptr);
    EXPECT_TRUE(SameBits(values[0], 0.7 * 0.1 + 0.1));
}

// The numbers in a full column, padding and all.
struct Column {
    alignas(64) std::array<double, columnLength> cells{};

    Column(const std::vector<double>& numbers, std::size_t count) {
        for (std::size_t i = 0; i < columnLength; ++i) {
            cells[i] = numbers[std::min(i, count - 1) % numbers.size()];
        }
    }
};

// The body over a column of that many numbers: where the tree fails for none of them, all values
// are the tree's, and where it fails, nothing is given.
void ExpectSameAsTree(SweepBody& body, const std::vector<double>& numbers, std::size_t count) {
    SCOPED_TRACE(count);
    const auto program = ProgramOf(body);
    ASSERT_NE(program, nullptr);
    const Column x(numbers, count);
    std::vector<double> wanted;
    bool fails = false;
    for (std::size_t i = 0; i < count; ++i) {
        wanted.push_back(body.ByTree(x.cells[i]));
        fails = fails || !body.errorText.empty();
    }
    for (int run = 0; run < 2; ++run) {  // a second one finds what the first one left
        SCOPED_TRACE(run);
        SideFold nothing;
        const double* const values = program->Run(x.cells.data(), count, nothing);
        EXPECT_EQ(values == nullptr, fails);
        const bool allFinite = !fails && std::ranges::all_of(wanted, [](double number) {
            return std::isfinite(number);
        });
        for (std::size_t i = 0; values != nullptr && i < count; ++i) {
            ASSERT_TRUE(SameNumber(values[i], wanted[i]))
                << "at " << x.cells[i] << ": " << values[i] << " instead of " << wanted[i];
        }
        alignas(64) std::array<double, columnLength> finite{};
        EXPECT_EQ(program->RunFinite(x.cells.data(), count, finite.data(), nothing), allFinite);
        for (std::size_t i = 0; allFinite && i < count; ++i) {
            ASSERT_TRUE(SameBits(finite[i], wanted[i]));
        }
    }
}

void ExpectSameAsTree(SweepBody& body, const std::vector<double>& numbers) {
    for (const std::size_t count :
         {std::size_t{1}, std::size_t{2}, std::size_t{7}, columnStride - 1, columnStride,
          columnStride + 1, columnLength / 2, columnLength / 2 + 1, columnLength - 1,
          columnLength}) {
        ExpectSameAsTree(body, numbers, count);
    }
}

std::vector<double> NumbersUpTo(double last) {
    std::vector<double> numbers;
    for (double number = -3.0; number <= last; number += 0.25) numbers.push_back(number);
    return numbers;
}

constexpr const char* bodies[] = {
    // operators, alone and one behind the other, on both sides
    "x+0.1",
    "0.1-x",
    "x*x*x-2*x+5",
    "(x+1)/(x*x+3)-x/(x+20)",
    "1-(2-(3-(4-x)))",
    "((x-1)*(x-2))/((x+30)*(x+40))",
    "2/(7/(x+11))",
    "(x+x)*(x-0.1)-(x*0.3-(x/7+x/3))",
    "-(-x)",
    "neg(x*x)-neg(x)",
    "|x|-x",
    "(x*3+1)*(x*3+1)",
    "x*(x*(x*(x*(x+1)-2)+3)-4)",
    // powers of two as divisors
    "x/2",
    "x/0.5/1024",
    "1/4*x/8",
    "x*pow(10,neg(300))/1048576/pow(2,1000)",
    "x/neg(16)",
    "x/3/4",
    "x/pow(2,neg(1022))*pow(2,neg(1030))",
    "x/pow(2,1023)/pow(2,40)",
    "x/if(1,4,2)",
    // functions
    "sin(x)*exp(-x/3)",
    "ctg(x+0.1)+actg(x+0.1)",
    "sqrt(x*x+1)",
    "inv(x+0.1)",
    "int(x)+frac(x)",
    "sign(x)+not(x)+bool(x)+cmp(x,1)",
    "rad(deg(x))",
    "cosh(x)+sinh(x)+tanh(x)+ctgh(x+0.1)",
    "log(x+4,x+5)",
    "pow(x+4,1.5)+ln(x+4)",
    "root(x+4,3)+cbrt(x+4)",
    "(x>1)+(x<2)*2+(x==0.5)*4",
    // functions without a kernel
    "median(x,1,0.5,x*x,-x)",
    "variance(x,x+1,2)+mean(x,1)+sum(x,x,x)+count(x,x)",
    "bit_and(int(x+3),5,8)+bit_xor(int(x+3),9,0)",
    "lsh(int(x+3),2,8)",
    "x+4%3",
    "(x+4)%(x+5)",
    "(int(x+3))!",
    "combination(int(x+5),2)",
    "days(2001,1+int(x+3)%12,28)",
    "sum_n(2,x,x,1)",
    "max_uint(2+int(x+3))",
    "max(x,0.25,-x)-min(x,0,1)",
    // choices: both ways, by ranges, one-sided, three ways, nested, in conditions, around constants
    "if(great_than(x,5),x*x,x/2)",
    "if(x-1,1,2)",
    "if(x,x+1,x-1,x*2)",
    "if(x+100,x,1/0)",
    "if(x,x,2)",
    "if(x,2,x)",
    "if(x,3,4)*x+if(x-1,5,x,7)",
    "if(0,x,1)",
    "if(1,x,x+1)+1",
    "if(nothing,x,1)+if(nothing,1,2,x)",
    "if(endless,x,1)",
    "if(if(x,0,1),2,if(x-1,x*3,4))",
    "if(int(x*4)%2,if(int(x*4)%3,x,x*x),if(int(x*4)%5,x+1,x*x*x)+x)",
    "x+if(x>0,if(x>1,if(x>2,if(x>3,4,x*3),x*2),x),0)*x",
    "if(x<1,median(x,1,2),bit_or(3,4,8))",
    "(x*x-1)+if(x>1,(x*x-1)*2,x)-(x*x-1)",
    "if(x==0.5,1,2)+if(x==0.25,x,-x)",
    // guards, also of what would fail for every element
    "if(x,1/x,0)",
    "if(x>=0,sqrt(x),sqrt(-x))",
    "if(x>100,1/0,x)",
    "if(x>100,factorial(-1),x)",
    "if(x>100,bit_and(0.5,1,8)+ln(-1),x*2)",
    "if(x>=-3,x,asin(2)+x)",
    // constants
    "2*3+sin(1)",
    "pow(2,10)-x",
    "endless*x",
    "nothing+x",
    "endless-x",
    "(1+2)*(3+4)+x*(5-6)",
    // what fails at some of the numbers, or at all
    "1/x",
    "inv(x)",
    "sqrt(x)",
    "ln(x-1)",
    "1/(x-2)+x",
    "0*(1/x)",
    "exp(x*1000)",
    "x%neg(2)",
    "bit_and(x,1,8)",
    "factorial(x)",
    "days(x,1,1)",
    "median(1/x,2,3)",
    "if(x==1,1/(x-1),x)",
    "if(x>2,ln(x-3),x)",
    "1/0+x",
    "asin(2)",
    "(1/x)*x",
    "(x/x)*0+1",
    "x/(x/(x-1))",
};

TEST(BodyProgram, GivesWhatTheTreeGives) {
    for (const char* const text : bodies) {
        SCOPED_TRACE(text);
        SweepBody body(text, formulasInFront);
        ASSERT_EQ(body.sheet.errorText, "");
        ExpectSameAsTree(body, NumbersUpTo(9.0));
        if (HasFatalFailure()) return;
    }
}

TEST(BodyProgram, TakesEveryNumber) {
    const std::vector<double> numbers = {0.0,  -0.0,  5e-324,   -5e-324,   1e-300,
                                         0.5,  1e300, -1e300,   1.5,       -2.5,
                                         1e16, 1e308, infinity, -infinity, noNumber};
    const std::vector<double> finite(numbers.begin(), numbers.end() - 3);
    for (const char* const text : bodies) {
        SCOPED_TRACE(text);
        SweepBody body(text, formulasInFront);
        // Each one alone, so that those pass of which the tree makes something.
        for (const double number : numbers) ExpectSameAsTree(body, {number}, 40);
        ExpectSameAsTree(body, numbers, 45);
        ExpectSameAsTree(body, finite, 36);
        if (HasFatalFailure()) return;
    }
}

TEST(BodyProgram, FailsWhereverOneElementFails) {
    for (const char* const text : {"1/(x-7)", "inv(x-7)", "if(x==7,ln(0),x)", "if(x==7,1/0,x)",
                                   "(x-1)/((x-7)*x)", "bit_and(if(x==7,0.5,1),1,8)"}) {
        SCOPED_TRACE(text);
        SweepBody body(text);
        for (std::size_t place = 0; place < columnLength; ++place) {
            SCOPED_TRACE(place);
            std::vector<double> numbers(columnLength, 3.0);
            numbers[place] = 7.0;
            const Column x(numbers, columnLength);
            const auto program = ProgramOf(body);
            SideFold nothing;
            // Only elements that are asked for count; the padding holds the last of them.
            EXPECT_EQ(program->Run(x.cells.data(), columnLength, nothing), nullptr);
            if (place % columnStride == 0 && place > 0) {
                EXPECT_NE(program->Run(x.cells.data(), place, nothing), nullptr);
            }
        }
    }
}

// With the finite test off below the body itself, as in a curve.
TEST(BodyProgram, LetsTermsBeInfiniteWhereTheTreeDoes) {
    for (const char* const text : {"inv(x)+1", "0*inv(x)", "atan(inv(x))", "if(ln(x),1,2,3)",
                                   "median(inv(x),1,2)+1", "1/inv(x)", "inv(x)", "1/x+1"}) {
        SCOPED_TRACE(text);
        SweepBody body(text);
        MarkStepTerm(body.Node());
        ExpectSameAsTree(body, NumbersUpTo(3.0));
        ExpectSameAsTree(body, {0.0, -0.0}, 50);
    }
}

TEST(BodyProgram, TakesSomeTermsOnTheSide) {
    std::vector<double> terms(columnLength);
    for (std::size_t i = 0; i < terms.size(); ++i) terms[i] = 0.1 * static_cast<double>(i) - 3.0;
    for (const char* const text : {"x", "3", "x*x", "1/(x*x+1)", "sin(x)+exp(x)/sqrt(x*x+1)",
                                   "median(x,1,2)", "if(x>4,x/3+x/7,sin(x))", "x+x+x+x+x+x+x+x"}) {
        SCOPED_TRACE(text);
        SweepBody body(text);
        const auto program = ProgramOf(body);
        const Column x(NumbersUpTo(9.0), columnLength);
        for (std::size_t size = 0; size <= columnLength; size += 37) {
            SCOPED_TRACE(size);
            for (const std::size_t count : {columnStride + 1, columnLength}) {
                SideFold side{0.5, false, terms.data(), terms.data() + size};
                EXPECT_NE(program->Run(x.cells.data(), count, side), nullptr);
                EXPECT_LE(side.Left(), size);
                double taken = 0.5;
                double all = 0.5;
                for (std::size_t i = 0; i < size; ++i) {
                    if (i == size - side.Left()) taken = all;
                    all += terms[i];
                }
                if (side.Left() == 0) taken = all;
                EXPECT_TRUE(SameBits(side.total, taken));
                side.Finish();
                EXPECT_TRUE(SameBits(side.total, all));
            }
        }
    }
}

// "if(x>0,x+if(x>1,x+...,x-1),x-0)", that many inside each other.
std::string NestedChoices(int depth) {
    std::string text;
    for (int i = 0; i < depth; ++i) text += "if(x>" + std::to_string(i % 9) + ",x+";
    text += "x*x";
    for (int i = 0; i < depth; ++i) text += ",x-" + std::to_string(i) + ")";
    return text;
}

TEST(BodyProgramBuilder, LeavesVeryDeepChoicesToTheTree) {
    for (const int depth : {1, 2, 20, 63, 64}) {
        SCOPED_TRACE(depth);
        SweepBody body(NestedChoices(depth));
        ExpectSameAsTree(body, NumbersUpTo(12.0), columnLength);
    }
    for (const int depth : {65, 66, 1000, 20000}) {
        SCOPED_TRACE(depth);
        SweepBody body(NestedChoices(depth));
        EXPECT_EQ(ProgramOf(body), nullptr);
    }
}

TEST(BodyProgramBuilder, TakesManyChoicesBesideEachOther) {
    std::string text = "x";
    for (int i = 0; i < 300; ++i) text += "+if(x>" + std::to_string(i % 13) + ",x/3,x*0.7)";
    SweepBody body(text);
    ExpectSameAsTree(body, NumbersUpTo(12.0), columnLength);
}

// "1+x*(2+x*(3+..." or "1*x+2*x+...".
std::string ManyNumbers(int count, bool isNested) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        text += std::to_string(i) + (isNested ? ".5+x*(" : ".5*x+");
    }
    text += "x";
    if (isNested) text.append(static_cast<std::size_t>(count), ')');
    return text;
}

TEST(BodyProgramBuilder, LeavesBodiesOfVeryManyNumbersToTheTree) {
    for (const bool isNested : {false, true}) {
        SCOPED_TRACE(isNested);
        SweepBody few(ManyNumbers(1500, isNested));
        ExpectSameAsTree(few, {0.5, 0.25, -0.75, 1.0}, columnLength);
        SweepBody many(ManyNumbers(5000, isNested));
        EXPECT_EQ(ProgramOf(many), nullptr);
    }
}

// Bodies of many operations on few columns; time in proportion to the terms, whichever way they
// nest.
TEST(BodyProgramBuilder, TakesLongBodies) {
    constexpr int count = 100000;
    std::string row = "x";
    std::string nestedRight;
    for (int i = 0; i < count; ++i) {
        row += "+x";
        nestedRight += "plus(x*x,";
    }
    nestedRight += "x";
    nestedRight.append(count, ')');
    SweepBody body(row);
    const auto program = ProgramOf(body);
    ASSERT_NE(program, nullptr);
    alignas(64) std::array<double, columnLength> x;
    x.fill(0.1);
    SideFold nothing;
    const double* const values = program->Run(x.data(), 1, nothing);
    ASSERT_NE(values, nullptr);
    EXPECT_TRUE(SameBits(values[0], body.ByTree(0.1)));

    // Each level holds a column until the ones inside are done.
    SweepBody deep(nestedRight);
    ASSERT_EQ(deep.sheet.errorText, "");
    EXPECT_EQ(ProgramOf(deep), nullptr);
}

}  // namespace
}  // namespace orvane
