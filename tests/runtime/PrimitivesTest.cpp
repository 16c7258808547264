// What the primitives of the run time compute, against values worked out by hand.

#include <gtest/gtest.h>

#include "QxColorSpaces.h"
#include "QxDerivatives.h"
#include "QxFilters.h"
#include "QxMatrixMath.h"
#include "QxNoise.h"
#include "QxSplines.h"
#include "QxText.h"

namespace {

constexpr float k_near = 1e-5f;

template <class Triple>
void ExpectNear(const Triple& value, float x, float y, float z, float tolerance = k_near)
{
    EXPECT_NEAR(value[0], x, tolerance);
    EXPECT_NEAR(value[1], y, tolerance);
    EXPECT_NEAR(value[2], z, tolerance);
}

}  // namespace

TEST(QxMath, GivesZeroWhereAFunctionHasNoValue)
{
    EXPECT_EQ(QxSqrt(-1), 0);
    EXPECT_EQ(QxLog(0), 0);
    EXPECT_EQ(QxInverseSqrt(0), 0);
    EXPECT_EQ(QxPow(-2, 0.5f), 0);
    EXPECT_EQ(QxPow(-2, 3), -8);
    EXPECT_NEAR(QxAcos(-2), QX_PI_FLOAT, k_near);
}

TEST(QxMath, WrapsTheRemainderIntoThePeriod)
{
    EXPECT_NEAR(QxMod(5.5f, 2), 1.5f, k_near);
    EXPECT_NEAR(QxMod(-0.5f, 2), 1.5f, k_near);
    EXPECT_NEAR(QxMod(-0.5f, -2), 1.5f, k_near);
}

TEST(QxMath, StepsAtTheEdgeItself)
{
    EXPECT_EQ(QxStep(1, 1), 1);
    EXPECT_EQ(QxSmoothStep(0, 1, 0.5f), 0.5f);
    EXPECT_EQ(QxSmoothStep(1, 1, 1), 1);
}

TEST(QxGeometry, RefractsStraightThroughEqualMedia)
{
    const QxVector3 incident = QxNormalize({1, -1, 0});
    const QxVector3 refracted = QxRefract(incident, {0, 1, 0}, 1);
    ExpectNear(refracted, incident.x, incident.y, incident.z);
    ExpectNear(QxRefract(incident, {0, 1, 0}, 2), 0, 0, 0);  // total reflection
    EXPECT_NEAR(QxFresnel(incident, {0, 1, 0}, 2).reflected, 1, k_near);
    EXPECT_NEAR(QxFresnel({0, -1, 0}, {0, 1, 0}, 1 / 1.5f).reflected, 0.04f, k_near);
}

TEST(QxGeometry, MeasuresTheDistanceFromASegment)
{
    EXPECT_NEAR(QxPointLineDistance({0, 0, 0}, {2, 0, 0}, {1, 3, 0}), 3, k_near);
    EXPECT_NEAR(QxPointLineDistance({0, 0, 0}, {2, 0, 0}, {5, 4, 0}), 5, k_near);
    EXPECT_NEAR(QxPointLineDistance({1, 1, 1}, {1, 1, 1}, {1, 1, 3}), 2, k_near);
}

TEST(QxMatrixMath, TurnsByTheRightHandRuleBeforeItMoves)
{
    const QxMatrix44 moved = QxTranslate(QxMatrix44::Identity(), {10, 0, 0});
    const QxMatrix44 turned = QxRotate(moved, QX_PI_FLOAT / 2, {0, 0, 1});
    ExpectNear(QxTransformPoint({1, 0, 0}, turned), 10, 1, 0);
    ExpectNear(QxTransformVector({1, 0, 0}, turned), 0, 1, 0);
}

TEST(QxMatrixMath, InvertsAndTellsSingularMatrices)
{
    const QxMatrix44 matrix = QxScale(QxTranslate(QxMatrix44::Identity(), {1, 2, 3}), {2, 4, 5});
    const QxVector3 back = QxTransformPoint(QxTransformPoint({7, 8, 9}, matrix), QxInverse(matrix));
    ExpectNear(back, 7, 8, 9, 1e-4f);
    EXPECT_NEAR(QxDeterminant(matrix), 40, 1e-4f);
    EXPECT_EQ(QxDeterminant(QxMatrix44::Scaling(0)), 0);
    EXPECT_EQ(QxInverse(QxMatrix44::Scaling(0)), QxMatrix44::Scaling(0));
}

TEST(QxMatrixMath, KeepsNormalsAtRightAnglesUnderUnevenScaling)
{
    const QxMatrix44 matrix = QxScale(QxMatrix44::Identity(), {1, 4, 1});
    const QxVector3 tangent = QxTransformVector({1, 1, 0}, matrix);
    const QxVector3 normal = QxTransformNormal({1, -1, 0}, QxInverse(matrix));
    EXPECT_NEAR(QxDot(tangent, normal), 0, k_near);
}

TEST(QxNoise, IsContinuousCentredAndRepeatable)
{
    float before;
    float behind;
    for (int i = -3; i < 4; ++i) {
        const auto x = static_cast<float>(i);
        QxNoise::At(before, {x - 1e-4f, 0.3f, 0.7f});
        QxNoise::At(behind, {x + 1e-4f, 0.3f, 0.7f});
        EXPECT_NEAR(before, behind, 1e-3f) << i;
        QxNoise::At(before, x);
        EXPECT_EQ(before, 0.5f) << i;
    }
    QxPeriodicNoise::At(before, 0.3f, 0.8f, 4, 5);
    QxPeriodicNoise::At(behind, 4.3f, -4.2f, 4, 5);
    EXPECT_NEAR(before, behind, 1e-4f);
}

TEST(QxNoise, CellsAreConstantAndDiffer)
{
    float first;
    float second;
    QxCellNoise::At(first, 2.1f, 3.9f);
    QxCellNoise::At(second, 2.9f, 3.1f);
    EXPECT_EQ(first, second);
    QxCellNoise::At(second, 3.1f, 3.1f);
    EXPECT_NE(first, second);
    QxCellNoise::At(first, INFINITY);  // outside the lattice, yet defined
    QxCellNoise::At(first, NAN);
}

TEST(QxSplines, PassThroughOrHullAsTheBasisSays)
{
    const float values[] = {0, 1, 3, 4, 9, 2, 7};
    const auto at = [&](int i) { return values[i]; };
    const auto spline = [&](const char* basis, float x) {
        return QxSpline<float>(QxFindSplineBasis(basis), x, 7, at);
    };
    EXPECT_NEAR(spline("catmull-rom", 0.25f), 3, k_near);
    EXPECT_NEAR(spline("catmull-rom", 1), 2, k_near);
    EXPECT_NEAR(spline("linear", 0.125f), 2, k_near);
    EXPECT_NEAR(spline("bezier", 0.5f), 4, k_near);
    EXPECT_NEAR(spline("bspline", 0), (0 + 4 * 1 + 3) / 6.0f, k_near);
    EXPECT_NEAR(spline("hermite", 0), 0, k_near);
    EXPECT_NEAR(spline("unheard of", 2), 2, k_near);
}

TEST(QxFilters, FallFromOneToZeroOverTheInterval)
{
    for (const char* filter : {"box", "triangle", "gaussian", "catmull-rom"}) {
        EXPECT_NEAR(QxFilterStep(0, -0.5f, 0.5f, 1, filter), 0.5f, k_near) << filter;
        EXPECT_NEAR(QxFilterStep(0, 9, 10, 1, filter), 1, k_near) << filter;
        EXPECT_NEAR(QxFilterStep(0, -10, -9, 1, filter), 0, k_near) << filter;
        EXPECT_EQ(QxFilterStep(0, 0, 0, 1, filter), 1) << filter;
    }
    EXPECT_NEAR(QxFilterStep(0, -0.25f, 0.75f, 1, "box"), 0.75f, k_near);
}

TEST(QxColorSpaces, GoThereAndBack)
{
    const QxRGBColor color = {0.2f, 0.5f, 0.7f};
    for (const char* space : {"rgb", "hsv", "hsl", "xyz", "xyY", "YIQ"}) {
        ASSERT_TRUE(QxIsColorSpace(space)) << space;
        const QxRGBColor back = QxColorTransform(QxColorFromRgb(color, space), space, "rgb");
        ExpectNear(back, color.r, color.g, color.b, 1e-3f);
    }
    ExpectNear(QxColorToRgb({1 / 3.0f, 1, 1}, "hsv"), 0, 1, 0);
    ExpectNear(QxColorFromRgb({0, 0, 1}, "hsl"), 2 / 3.0f, 1, 0.5f);
    EXPECT_FALSE(QxIsColorSpace("unheard of"));
}

TEST(QxText, WritesEachArgumentByItsOwnType)
{
    const float number = 0.5f;
    const QxVector3 point = {1, 2, 3};
    const char* name = "oak";
    const QxTextArgument arguments[] = {{QxTextArgument::Float, &number},
                                        {QxTextArgument::Triple, &point},
                                        {QxTextArgument::String, &name}};
    EXPECT_EQ(QxFormat("%f|%p|%s|%%|%f|%", arguments, 3), "0.5|1 2 3|oak|%|%f|%");
    EXPECT_TRUE(QxMatch("^o.k$", "oak"));
    EXPECT_FALSE(QxMatch("(", "("));
}

TEST(QxDerivatives, TakeNeighboursAndEdges)
{
    // Values u * u + 10 v, with a step of 1 in both directions.
    const QxGrid grid = {4, 3};
    float values[12];
    for (int i = 0; i < 12; ++i)
        values[i] = static_cast<float>((i % 4) * (i % 4) + 10 * (i / 4));
    float result[12];
    QxDerivative(result, values, 1, grid, QxGridAxis::U);
    EXPECT_EQ(result[4], 1);
    EXPECT_EQ(result[5], 2);
    EXPECT_EQ(result[7], 5);
    QxDerivativeBy(result, values, values, grid);
    EXPECT_NEAR(result[6], 1, k_near);
    QxDerivative(values, values, 2, grid, QxGridAxis::V);  // in place
    EXPECT_EQ(values[0], 5);
    EXPECT_EQ(values[6], 5);
    QxDerivative(values, values, 1, {12, 1}, QxGridAxis::V);  // no neighbour
    EXPECT_EQ(values[3], 0);
}
