#include <array>

#include "functions/function_bodies.h"
#include "functions/keyword_table.h"

// The vocabulary itself. A new function is a row here, a line in the list of bodies, and its body.
// Aliases are rows with the same columns. The rows are constant data: the sorted table, made at
// start-up in another file, must find them complete.

namespace orvane {

namespace {

using Group = KeywordGroup;
using Help = HelpKind;

constexpr const char* none = nullptr;

// Parameter texts that several sweeps share.
constexpr const char* seriesParams =
    "variable name,float lower-limit,float step-len,pint steps,function term(name)";
constexpr const char* curveParams =
    "variable name,float left-endpoint,float right-endpoint,pint steps,function Y(name)";
constexpr const char* polarParams =
    "variable name,float start-radian,float end-radian,pint steps,function Radius(name)";
constexpr const char* parametricParams =
    "variable name,float left-endpoint,float right-endpoint,pint steps,function X(name),"
    "function Y(name)";

// The sweeps that do not run one body between two ends.
constexpr SweepForm overSteps = {SweepShape::plain, true};
constexpr SweepForm parametric = {SweepShape::parametric, false};

constexpr const char* minorParams = "pint row,pint column,point,point/pint row,pint column,matrix";

// Kept: the four-parameter form takes its first choice for a negative condition, which this text
// has the other way round.
constexpr const char* ifParams =
    "int condition/int condition,select positive/select none-zero,select zero/select zero,"
    "select negative";

}  // namespace

// name, return text, group, fewest and most parameters, main and optional parameters, help, body.
// A row stays on one line, however wide, so that the columns can be read downward.

// clang-format off
constinit const std::array<KeywordEntry, keywordCount> keywordRows = {{
    // constants
    {"pi",    none, Group::constant, 0, 0, none, none, Help::number},
    {"e",     none, Group::constant, 0, 0, none, none, Help::number},
    {"true",  none, Group::constant, 0, 0, none, none, Help::number},
    {"false", none, Group::constant, 0, 0, none, none, Help::number},
    // headers and output keywords
    {"bin",              none, Group::header, 0, 0, none, none, Help::outputKey},
    {"binary",           none, Group::header, 0, 0, none, none, Help::outputKey},
    {"base2",            none, Group::header, 0, 0, none, none, Help::outputKey},
    {"quat",             none, Group::header, 0, 0, none, none, Help::outputKey},
    {"quaternary",       none, Group::header, 0, 0, none, none, Help::outputKey},
    {"base4",            none, Group::header, 0, 0, none, none, Help::outputKey},
    {"oct",              none, Group::header, 0, 0, none, none, Help::outputKey},
    {"octal",            none, Group::header, 0, 0, none, none, Help::outputKey},
    {"base8",            none, Group::header, 0, 0, none, none, Help::outputKey},
    {"hex",              none, Group::header, 0, 0, none, none, Help::outputKey},
    {"hexadecimal",      none, Group::header, 0, 0, none, none, Help::outputKey},
    {"base16",           none, Group::header, 0, 0, none, none, Help::outputKey},
    {"uint",             none, Group::header, 0, 0, none, none, Help::outputKey},
    {"unsigned_integer", none, Group::header, 0, 0, none, none, Help::outputKey},
    {"hide",             none, Group::header, 0, 0, none, none, Help::outputKey},
    {"percent",          none, Group::header, 0, 0, none, none, Help::outputKey},
    {"text",             none, Group::header, 0, 0, none, none, Help::text},
    {"define",           none, Group::header, 0, 0, none, none, Help::define},
    // string functions: folded into numbers before anything is evaluated
    {"strlen",        "int", Group::string, 1, 1, "string", none, Help::string},
    {"strsum",        "int", Group::string, 1, 1, "string", none, Help::string},
    {"strsumspecial", "int", Group::string, 1, 1, "string", none, Help::string},
    // bit functions
    {"max_int",     "int", Group::bits, 1, 1, "bits",           none, Help::bits, MaxInt},
    {"min_int",     "int", Group::bits, 1, 1, "bits",           none, Help::bits, MinInt},
    {"max_uint",    "int", Group::bits, 1, 1, "bits",           none, Help::bits, MaxUint},
    {"bit_not",     "int", Group::bits, 2, 2, "uint,bits",      none, Help::bits, BitNot},
    {"bitwise_not", "int", Group::bits, 2, 2, "uint,bits",      none, Help::bits, BitNot},
    {"bit_and",     "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, BitAnd},
    {"bitwise_and", "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, BitAnd},
    {"bit_or",      "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, BitOr},
    {"bitwise_or",  "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, BitOr},
    {"bit_xor",     "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, BitXor},
    {"bitwise_xor", "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, BitXor},
    {"lsh",         "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, LeftShift},
    {"left_shift",  "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, LeftShift},
    {"rsh",         "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, RightShift},
    {"right_shift", "int", Group::bits, 3, 3, "uint,uint,bits", none, Help::bits, RightShift},
    // logic
    {"sign",         "float",   Group::normal, 1, 1, "float",       none, Help::logic, SignOf},
    {"not",          "boolean", Group::normal, 1, 1, "float",       none, Help::logic, LogicalNot},
    {"bool",         "int",     Group::normal, 1, 1, "float",       none, Help::logic, TruthOf},
    {"boolean",      "int",     Group::normal, 1, 1, "float",       none, Help::logic, TruthOf},
    {"cmp",          "float",   Group::normal, 2, 2, "float,float", none, Help::logic, Compare},
    {"compare",      "float",   Group::normal, 2, 2, "float,float", none, Help::logic, Compare},
    {"equals",       "int",     Group::normal, 2, 2, "float,float", none, Help::logic, Equals},
    {"not_equals",   "int",     Group::normal, 2, 2, "float,float", none, Help::logic, NotEquals},
    {"great_than",   "int",     Group::normal, 2, 2, "float,float", none, Help::logic, GreatThan},
    {"great_equals", "int",     Group::normal, 2, 2, "float,float", none, Help::logic, GreatEquals},
    {"less_than",    "int",     Group::normal, 2, 2, "float,float", none, Help::logic, LessThan},
    {"less_equals",  "int",     Group::normal, 2, 2, "float,float", none, Help::logic, LessEquals},
    // normal functions
    {"int",         "int",   Group::normal, 1, 1, "float",              none, Help::normal, IntegerPart},
    {"integer",     "int",   Group::normal, 1, 1, "float",              none, Help::normal, IntegerPart},
    {"frac",        "float", Group::normal, 1, 1, "float",              none, Help::normal, FractionalPart},
    {"fractional",  "float", Group::normal, 1, 1, "float",              none, Help::normal, FractionalPart},
    {"sqrt",        "float", Group::normal, 1, 1, "ufloat",             none, Help::normal, SquareRoot},
    {"square_root", "float", Group::normal, 1, 1, "ufloat",             none, Help::normal, SquareRoot},
    {"cbrt",        "float", Group::normal, 1, 1, "float",              none, Help::normal, CubeRoot},
    {"cube_root",   "float", Group::normal, 1, 1, "float",              none, Help::normal, CubeRoot},
    {"rad",         "float", Group::normal, 1, 1, "float degree",       none, Help::normal, DegreesToRadians},
    {"radian",      "float", Group::normal, 1, 1, "float degree",       none, Help::normal, DegreesToRadians},
    {"deg",         "float", Group::normal, 1, 1, "float radian",       none, Help::normal, RadiansToDegrees},
    {"degree",      "float", Group::normal, 1, 1, "float radian",       none, Help::normal, RadiansToDegrees},
    {"inv",         "float", Group::normal, 1, 1, "float",              none, Help::normal, Invert},
    {"invert",      "float", Group::normal, 1, 1, "float",              none, Help::normal, Invert},
    {"ln",          "float", Group::normal, 1, 1, "pfloat",             none, Help::normal, NaturalLogarithm},
    {"log10",       "float", Group::normal, 1, 1, "pfloat",             none, Help::normal, CommonLogarithm},
    {"exp",         "float", Group::normal, 1, 1, "float power",        none, Help::normal, Exponential},
    {"exponential", "float", Group::normal, 1, 1, "float power",        none, Help::normal, Exponential},
    {"sin",         "float", Group::normal, 1, 1, "float radian",       none, Help::normal, Sine},
    {"cos",         "float", Group::normal, 1, 1, "float radian",       none, Help::normal, Cosine},
    {"tan",         "float", Group::normal, 1, 1, "float radian",       none, Help::normal, Tangent},
    {"ctg",         "float", Group::normal, 1, 1, "float radian",       none, Help::normal, Cotangent},
    {"asin",        "float", Group::normal, 1, 1, "float",              none, Help::normal, ArcSine},
    {"acos",        "float", Group::normal, 1, 1, "float",              none, Help::normal, ArcCosine},
    {"atan",        "float", Group::normal, 1, 1, "float",              none, Help::normal, ArcTangent},
    {"actg",        "float", Group::normal, 1, 1, "float",              none, Help::normal, ArcCotangent},
    {"sinh",        "float", Group::normal, 1, 1, "float",              none, Help::normal, HyperbolicSine},
    {"cosh",        "float", Group::normal, 1, 1, "float",              none, Help::normal, HyperbolicCosine},
    {"tanh",        "float", Group::normal, 1, 1, "float",              none, Help::normal, HyperbolicTangent},
    {"ctgh",        "float", Group::normal, 1, 1, "float",              none, Help::normal, HyperbolicCotangent},
    {"reminder",    "float", Group::normal, 2, 2, "float,float base",   none, Help::normal, Reminder},
    {"log",         "float", Group::normal, 2, 2, "pfloat base,pfloat", none, Help::normal, LogarithmToBase},
    {"root",        "float", Group::normal, 2, 2, "float,float root",   none, Help::normal, RootOf},
    {"pow",         "float", Group::normal, 2, 2, "float,float power",  none, Help::normal, Power},
    {"power",       "float", Group::normal, 2, 2, "float,float power",  none, Help::normal, Power},
    // dates
    {"days",             "int", Group::normal, 3, 3, "uint yyyy,uint mm,uint dd", none, Help::normal, Days},
    {"days_of_the_year", "int", Group::normal, 3, 3, "uint yyyy,uint mm,uint dd", none, Help::normal, DaysOfTheYear},
    {"weekday",          "int", Group::normal, 3, 3, "uint yyyy,uint mm,uint dd", none, Help::normal, Weekday},
    // statistics
    {"factorial",   "int",   Group::normal, 1,  1, "uint",              none,        Help::statistics, Factorial},
    {"permutation", "float", Group::normal, 2,  2, "uint,uint",         none,        Help::statistics, Permutation},
    {"combination", "float", Group::normal, 2,  2, "uint,uint",         none,        Help::statistics, Combination},
    {"max",         "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Maximum},
    {"maximum",     "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Maximum},
    {"min",         "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Minimum},
    {"minimum",     "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Minimum},
    {"sum",         "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Sum},
    {"summary",     "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Sum},
    {"mean",        "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Mean},
    {"average",     "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Mean},
    {"variance",    "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Variance},
    {"median",      "float", Group::normal, 1, -1, "float",             "float,...", Help::statistics, Median},
    {"count",       "int",   Group::normal, 1, -1, "float",             "float,...", Help::statistics, CountOf},
    {"sum_n",       "float", Group::normal, 1, -1, "float power,float", "float,...", Help::statistics, SumOfPowers},
    {"summary_n",   "float", Group::normal, 1, -1, "float power,float", "float,...", Help::statistics, SumOfPowers},
    // points
    {"length",             "float", Group::point, 1, -1, "float/point",       "float,...",           Help::point, Length},
    {"dot_product",        "float", Group::point, 2,  2, "point,point",       "point",               Help::point, DotProduct},
    {"angle_of_vectors",   "float", Group::point, 2,  2, "point,point",       "point",               Help::point, AngleOfVectors},
    {"triangle_area",      "float", Group::point, 3,  3, "point,point,point", "point",               Help::point, TriangleArea},
    {"distance_to_line",   "float", Group::point, 3,  3, "point,point,point", "point",               Help::point, DistanceToLine},
    {"polygon_edges",      "float", Group::point, 1, -1, "point/float",       "point,.../float,...", Help::point, PolygonEdges},
    {"polygon_edges_open", "float", Group::point, 1, -1, "point/float",       "point,.../float,...", Help::point, PolygonEdgesOpen},
    // vectors
    {"point",         "column vector", Group::vector, 1, -1, "float/point", "float,...", Help::vectorMatrix, BuildColumn},
    {"vector_row",    "row vector",    Group::vector, 1, -1, "float/point", "float,...", Help::vectorMatrix, BuildRow},
    {"vector_clm",    "column vector", Group::vector, 1, -1, "float/point", "float,...", Help::vectorMatrix, BuildColumn},
    {"vector_column", "column vector", Group::vector, 1, -1, "float/point", "float,...", Help::vectorMatrix, BuildColumn},
    // matrices
    {"matrix",             "matrix", Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, BuildMatrix},
    {"matrix_t",           "matrix", Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixTranspose},
    {"matrix_transpose",   "matrix", Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixTranspose},
    {"matrix_inv",         "matrix", Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixInverse},
    {"matrix_inverse",     "matrix", Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixInverse},
    {"matrix_adj",         "matrix", Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixAdjoint},
    {"matrix_adjoint",     "matrix", Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixAdjoint},
    {"matrix_det",         "float",  Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixDeterminant},
    {"matrix_determinant", "float",  Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixDeterminant},
    {"matrix_rank",        "uint",   Group::matrix, 1, -1, "point,point/matrix", "point,...", Help::vectorMatrix, MatrixRank},
    {"matrix_minor",       "matrix", Group::matrix, 1, -1, minorParams,          "point,...", Help::vectorMatrix, MatrixMinor},
    // sweeps of a variable
    {"series",                         "float", Group::variable, 5, 5, seriesParams,     none,             Help::series,        {Series, overSteps}},
    {"product",                        "float", Group::variable, 5, 5, seriesParams,     none,             Help::product,       {Product, overSteps}},
    {"equation_root",                  "float", Group::variable, 5, 5, curveParams,      none,             Help::equation,      EquationRoot},
    {"integral_area_xy",               "float", Group::variable, 5, 6, curveParams,      "boolean option", Help::integralArea,  IntegralAreaXy},
    {"integral_area_polar",            "float", Group::variable, 5, 6, polarParams,      "boolean option", Help::integralArea,  IntegralAreaPolar},
    {"integral_area_parametric_xy",    "float", Group::variable, 6, 6, parametricParams, none,             Help::integralArea,  {IntegralAreaParametricXy, parametric}},
    {"integral_area_parametric_polar", "float", Group::variable, 6, 7, parametricParams, "boolean option", Help::integralArea,  {IntegralAreaParametricPolar, parametric}},
    {"integral_curve_xy",              "float", Group::variable, 5, 6, curveParams,      none,             Help::integralCurve, IntegralCurveXy},
    {"integral_curve_polar",           "float", Group::variable, 5, 6, polarParams,      none,             Help::integralCurve, IntegralCurvePolar},
    {"integral_curve_parametric",      "float", Group::variable, 6, 7, parametricParams, none,             Help::integralCurve, {IntegralCurveParametric, parametric}},
    {"locus_xy",                       "1",     Group::variable, 5, 6, curveParams,      none,             Help::locus,         RunLocusXy},
    {"locus_polar",                    "1",     Group::variable, 5, 6, polarParams,      none,             Help::locus,         RunLocusPolar},
    {"locus_parametric",               "1",     Group::variable, 6, 7, parametricParams, none,             Help::locus,         {RunLocusParametric, parametric}},
    // choice
    {"if", "formula", Group::condition, 3, 4, ifParams, none, Help::condition},
    // operators
    {"neg",      "any",   Group::operators, 1,  1, "any",     none, Help::operators, Negate},
    {"negative", "any",   Group::operators, 1,  1, "any",     none, Help::operators, Negate},
    {"plus",     "any",   Group::operators, 2,  2, "any,any", none, Help::operators, Plus},
    {"minus",    "any",   Group::operators, 2,  2, "any,any", none, Help::operators, Minus},
    {"times",    "any",   Group::operators, 2,  2, "any,any", none, Help::operators, Times},
    {"divide",   "any",   Group::operators, 2,  2, "any,any", none, Help::operators, Divide},
    {"abs",      "float", Group::operators, 1, -1, "any",     none, Help::operators, Absolute},
    {"absolute", "float", Group::operators, 1, -1, "any",     none, Help::operators, Absolute},
    // complex numbers
    {"complex", "complex,float", Group::complex, -1, -1, "any,any", none, Help::complex, BuildComplex},
}};

// group, which children are evaluated first, family, choice
constinit const std::array<FamilyEntry, keywordGroupCount> familyRows = {{
    {Group::constant,  ChildRule::all,    nullptr,          nullptr},
    {Group::header,    ChildRule::all,    nullptr,          nullptr},
    {Group::bits,      ChildRule::all,    EvaluateBits,     nullptr},
    {Group::normal,    ChildRule::all,    EvaluateNormal,   nullptr},
    {Group::string,    ChildRule::all,    nullptr,          nullptr},
    {Group::point,     ChildRule::all,    EvaluatePoint,    nullptr},
    {Group::vector,    ChildRule::all,    EvaluateVector,   nullptr},
    {Group::matrix,    ChildRule::all,    EvaluateMatrix,   nullptr},
    {Group::variable,  ChildRule::none,   EvaluateVariable, nullptr},
    {Group::condition, ChildRule::chosen, nullptr,          EvaluateIf},
    {Group::operators, ChildRule::all,    EvaluateOperator, nullptr},
    {Group::complex,   ChildRule::all,    EvaluateComplex,  nullptr},
}};
// clang-format on

}  // namespace orvane
