#pragma once

#include "functions/keyword_table.h"

// Every family entry and every function body that a keyword row names: one line each, by the file
// that defines it. This list only declares; who defines a line may stand on any floor.

namespace orvane {

// --- family entries
void EvaluateNormal(const FamilyCall& call);                              // normal_functions.cpp
void EvaluateBits(const FamilyCall& call);                                // bit_functions.cpp
void EvaluatePoint(const FamilyCall& call);                               // point_functions.cpp
void EvaluateVector(const FamilyCall& call);                              // vector_functions.cpp
void EvaluateMatrix(const FamilyCall& call);                              // matrix_functions.cpp
void EvaluateVariable(const FamilyCall& call);                            // step_call.cpp
void EvaluateOperator(const FamilyCall& call);                            // operator_functions.cpp
void EvaluateComplex(const FamilyCall& call);                             // operator_functions.cpp
FunctionNode* EvaluateIf(const FamilyCall& call, bool firstIsEvaluated);  // condition.cpp

// --- normal_functions.cpp: logic
double SignOf(ScalarCall& call);
double LogicalNot(ScalarCall& call);
double TruthOf(ScalarCall& call);
double Compare(ScalarCall& call);
double Equals(ScalarCall& call);
double NotEquals(ScalarCall& call);
double GreatThan(ScalarCall& call);
double GreatEquals(ScalarCall& call);
double LessThan(ScalarCall& call);
double LessEquals(ScalarCall& call);

// --- normal_functions.cpp: elementary
double IntegerPart(ScalarCall& call);
double FractionalPart(ScalarCall& call);
double SquareRoot(ScalarCall& call);
double CubeRoot(ScalarCall& call);
double DegreesToRadians(ScalarCall& call);
double RadiansToDegrees(ScalarCall& call);
double Invert(ScalarCall& call);
double NaturalLogarithm(ScalarCall& call);
double CommonLogarithm(ScalarCall& call);
double LogarithmToBase(ScalarCall& call);
double Exponential(ScalarCall& call);
double Sine(ScalarCall& call);
double Cosine(ScalarCall& call);
double Tangent(ScalarCall& call);
double Cotangent(ScalarCall& call);
double ArcSine(ScalarCall& call);
double ArcCosine(ScalarCall& call);
double ArcTangent(ScalarCall& call);
double ArcCotangent(ScalarCall& call);
double HyperbolicSine(ScalarCall& call);
double HyperbolicCosine(ScalarCall& call);
double HyperbolicTangent(ScalarCall& call);
double HyperbolicCotangent(ScalarCall& call);
double Reminder(ScalarCall& call);
double RootOf(ScalarCall& call);
double Power(ScalarCall& call);

// --- statistics_functions.cpp
double Factorial(ScalarCall& call);
double Permutation(ScalarCall& call);
double Combination(ScalarCall& call);
double Maximum(ScalarCall& call);
double Minimum(ScalarCall& call);
double CountOf(ScalarCall& call);
double Sum(ScalarCall& call);
double SumOfPowers(ScalarCall& call);
double Mean(ScalarCall& call);
double Variance(ScalarCall& call);
double Median(ScalarCall& call);
double Days(ScalarCall& call);
double DaysOfTheYear(ScalarCall& call);
double Weekday(ScalarCall& call);

// --- bit_functions.cpp
double MaxInt(ScalarCall& call);
double MinInt(ScalarCall& call);
double MaxUint(ScalarCall& call);
double BitNot(ScalarCall& call);
double BitAnd(ScalarCall& call);
double BitOr(ScalarCall& call);
double BitXor(ScalarCall& call);
double LeftShift(ScalarCall& call);
double RightShift(ScalarCall& call);

// --- operator_functions.cpp
void Negate(ValueCall& call);
void Plus(ValueCall& call);
void Minus(ValueCall& call);
void Times(ValueCall& call);
void Divide(ValueCall& call);
void Absolute(ValueCall& call);
void BuildComplex(ValueCall& call);

// --- vector_functions.cpp
void BuildColumn(ValueCall& call);
void BuildRow(ValueCall& call);

// --- point_functions.cpp
void Length(ValueCall& call);
void PolygonEdges(ValueCall& call);
void PolygonEdgesOpen(ValueCall& call);
void DotProduct(ValueCall& call);
void AngleOfVectors(ValueCall& call);
void TriangleArea(ValueCall& call);
void DistanceToLine(ValueCall& call);

// --- matrix_functions.cpp
void BuildMatrix(ValueCall& call);
void MatrixAdjoint(ValueCall& call);
void MatrixInverse(ValueCall& call);
void MatrixRank(ValueCall& call);
void MatrixDeterminant(ValueCall& call);
void MatrixTranspose(ValueCall& call);
void MatrixMinor(ValueCall& call);

// --- step_functions.cpp
void Series(StepCall& call);
void Product(StepCall& call);
void EquationRoot(StepCall& call);

// --- integral_functions.cpp
void IntegralAreaXy(StepCall& call);
void IntegralAreaPolar(StepCall& call);
void IntegralAreaParametricXy(StepCall& call);
void IntegralAreaParametricPolar(StepCall& call);
void IntegralCurveXy(StepCall& call);
void IntegralCurvePolar(StepCall& call);
void IntegralCurveParametric(StepCall& call);

// --- locus/locus_sweep.cpp
void RunLocusXy(StepCall& call);
void RunLocusPolar(StepCall& call);
void RunLocusParametric(StepCall& call);

}  // namespace orvane
