// Compares what the primitives of the run time compute with values worked out by hand.

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

#include "QxCalls.h"
#include "QxColorSpaces.h"
#include "QxDerivatives.h"
#include "QxFilters.h"
#include "QxMatrixMath.h"
#include "QxNoise.h"
#include "QxSceneCalls.h"
#include "QxSplines.h"
#include "QxText.h"

namespace {

constexpr float k_near = 1e-5f;

/// Returns u * u + 10 v, where u is the number of the column and v that of the row.
float ValueAt(int point, int columns)
{
    const int u = point % columns;
    const int v = point / columns;
    return static_cast<float>(u * u + 10 * v);
}

template <class Triple>
void ExpectNear(const Triple& value, float x, float y, float z, float tolerance = k_near)
{
    EXPECT_NEAR(value[0], x, tolerance);
    EXPECT_NEAR(value[1], y, tolerance);
    EXPECT_NEAR(value[2], z, tolerance);
}

}  // namespace

TEST(QxMath, ReturnsZeroWhereAFunctionIsUndefined)
{
    EXPECT_EQ(QxSqrt(-1), 0);
    EXPECT_EQ(QxLog(5, 1), 0);
    EXPECT_NEAR(QxLog(8, 2), 3, k_near);
    EXPECT_EQ(QxInverseSqrt(0), 0);
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

TEST(QxGeometry, RefractsAndReflectsAtTheBoundaryOfMedia)
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

TEST(QxMatrixMath, RotatesByTheRightHandRuleBeforeTranslating)
{
    const QxMatrix44 moved = QxTranslate(QxMatrix44::Identity(), {10, 0, 0});
    const QxMatrix44 turned = QxRotate(moved, QX_PI_FLOAT / 2, {0, 0, 1});
    ExpectNear(QxTransformPoint({1, 0, 0}, turned), 10, 1, 0);
    ExpectNear(QxTransformVector({1, 0, 0}, turned), 0, 1, 0);
}

TEST(QxMatrixMath, InvertsMatricesAndRecognizesSingularOnes)
{
    const QxMatrix44 matrix = QxScale(QxTranslate(QxMatrix44::Identity(), {1, 2, 3}), {2, 4, 5});
    const QxVector3 back = QxTransformPoint(QxTransformPoint({7, 8, 9}, matrix), QxInverse(matrix));
    ExpectNear(back, 7, 8, 9, 1e-4f);
    EXPECT_NEAR(QxDeterminant(matrix), 40, 1e-4f);
    EXPECT_EQ(QxDeterminant(QxMatrix44::Scaling(0)), 0);
    EXPECT_EQ(QxInverse(QxMatrix44::Scaling(0)), QxMatrix44::Scaling(0));
}

TEST(QxMatrixMath, KeepsNormalsPerpendicularUnderUnevenScaling)
{
    const QxMatrix44 matrix = QxScale(QxMatrix44::Identity(), {1, 4, 1});
    const QxVector3 tangent = QxTransformVector({1, 1, 0}, matrix);
    const QxVector3 normal = QxTransformNormal({1, -1, 0}, QxInverse(matrix));
    EXPECT_NEAR(QxDot(tangent, normal), 0, k_near);
}

TEST(QxNoise, IsContinuousCentredAndRepeatable)
{
    float before;
    float above;
    for (int i = -3; i < 4; ++i) {
        const auto x = static_cast<float>(i);
        QxNoise::At(before, {x - 1e-4f, 0.3f, 0.7f});
        QxNoise::At(above, {x + 1e-4f, 0.3f, 0.7f});
        EXPECT_NEAR(before, above, 1e-3f) << i;
        QxNoise::At(before, x);
        EXPECT_EQ(before, 0.5f) << i;
    }
    float lowest = 1;
    float highest = 0;
    for (int i = 0; i < 4000; ++i) {
        QxNoise::At(before, 0.25f * static_cast<float>(i));
        lowest = std::min(lowest, before);
        highest = std::max(highest, before);
    }
    EXPECT_NEAR(lowest, 0, 0.05f);
    EXPECT_NEAR(highest, 1, 0.05f);
    QxPeriodicNoise::At(before, 0.3f, 0.8f, 4, 5);
    QxPeriodicNoise::At(above, 4.3f, -4.2f, 4, 5);
    EXPECT_NEAR(before, above, 1e-4f);
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
    // Numbers outside of the lattice belong to its outermost cells, and NaN to the lowest one.
    const auto at = [](float x) {
        float value;
        QxCellNoise::At(value, x);
        return value;
    };
    EXPECT_EQ(at(INFINITY), at(1e20f));
    EXPECT_EQ(at(-INFINITY), at(-1e20f));
    EXPECT_EQ(at(NAN), at(-1e20f));
    EXPECT_NE(at(NAN), at(1e20f));
}

TEST(QxSplines, FollowTheirBasis)
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
    EXPECT_NEAR(spline("linear", NAN), 1, k_near);  // as at 0
    EXPECT_NEAR(spline("linear", INFINITY), 2, k_near);
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

TEST(QxFilters, CenterASingleSampleInItsInterval)
{
    const float around = QxFilterStepEnd(-0.0625f, -0.0375f);
    for (const char* filter : {"box", "triangle", "gaussian", "catmull-rom"}) {
        EXPECT_NEAR(QxFilterStep(0.5f, 0.5f, around, 1, filter), 0.5f, k_near) << filter;
        EXPECT_NEAR(QxFilterStep(0.5f, 0.46f, around, 1, filter) +
                        QxFilterStep(0.5f, 0.54f, around, 1, filter),
                    1, k_near)
            << filter;
    }
    EXPECT_NEAR(QxFilterStep(0.5f, 0.46f, around, 1, "box"), 0.1f, 1e-3f);
    EXPECT_EQ(QxFilterStep(0.5f, 0.5f, QxIntervalAround(0), 1, "box"), 1);
}

TEST(QxColorSpaces, ConvertBack)
{
    const QxRGBColor color = {0.2f, 0.5f, 0.7f};
    for (const char* space : {"rgb", "hsv", "hsl", "xyz", "xyY", "YIQ"}) {
        ASSERT_TRUE(QxIsColorSpace(space)) << space;
        const QxRGBColor back = QxColorTransform(QxColorFromRgb(color, space), space, "rgb");
        ExpectNear(back, color.r, color.g, color.b, 1e-5f);
    }
    ExpectNear(QxColorToRgb({1 / 3.0f, 1, 1}, "hsv"), 0, 1, 0);
    ExpectNear(QxColorFromRgb({0, 0, 1}, "hsl"), 2 / 3.0f, 1, 0.5f);
    // The components of the colors are all greater than 1, or all negative.
    for (const char* space : {"hsv", "hsl"})
        for (const QxRGBColor& color : {QxRGBColor{2, 5, 3}, QxRGBColor{-1, -3, -2}})
            ExpectNear(QxColorToRgb(QxColorFromRgb(color, space), space), color.r, color.g,
                       color.b);
    for (const char* unknown : {"unheard of", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(QxIsColorSpace(unknown));
        ExpectNear(QxColorTransform({1, 0.5f, 0}, unknown, unknown), 1, 0.5f, 0);
    }
}

TEST(QxText, WritesEachArgumentByItsOwnType)
{
    const float number = 0.5f;
    const QxVector3 point = {1, 2, 3};
    const char* name = "oak";
    const QxTextArgument arguments[] = {{QxTextArgument::Float, &number},
                                        {QxTextArgument::Triple, &point},
                                        {QxTextArgument::String, &name}};
    EXPECT_STREQ(QxFormat("%f|%p|%s|%%|%f|%", arguments, 3).Characters(), "0.5|1 2 3|oak|%|%f|%");
    const QxVector3 large = {16777216, -2.75f, -0.25f};
    const QxTextArgument wholes[] = {{QxTextArgument::Float, &large.x},
                                     {QxTextArgument::Triple, &large}};
    EXPECT_STREQ(QxFormat("%d %d %d", wholes, 2).Characters(), "16777216 16777216 -2 0 %d");
}

TEST(QxGeometry, MeasuresVectorsOfAnyLength)
{
    for (const float size : {1e-25f, 1e-10f, 1.0f, 1e20f, 5e37f}) {
        const QxVector3 v = {3 * size, 0, -4 * size};
        EXPECT_FLOAT_EQ(QxLength(v) / size, 5);
        ExpectNear(QxNormalize(v), 0.6f, 0, -0.8f);
    }
}

TEST(QxPattern, MatchesByStatesInLinearTime)
{
    const std::string deep(17000, '(');
    const std::string nested = "((a{1,255}){1,255}){1,100}b";
    const std::string letters(60000, 'a');
    const std::string slow = "(a*)*(a*)*(a|aa)+$x";
    const struct {
        const char* expression;
        const char* text;
        bool matches;
    } cases[] = {
        {"^o.k$", "oak", true},
        {"^o.k$", "oar", false},
        {"", "", true},
        {"a|", "b", true},
        {"^(cat|dog|)s?$", "s", true},
        {"x(ab|c){2,3}y", "xabcy", true},
        {"x(ab|c){2,3}y", "xcccabcy", false},
        {"^(a{0}b{2,})+$", "bbbbb", true},
        {"^a{0,2}$", "aaa", false},
        {"[]a-]+$", "x-]a", true},
        {"[^[:alpha:]_]", "ab_c", false},
        {"^[[:digit:]x-z]+$", "y42", true},
        {"\\.\\d\\s", "a.4 ", true},
        {"\\boak\\b", "soak oak", true},
        {"\\<oak", "soak", false},
        {"a)", "a)", true},
        {"($|b)*c^", "bc", false},
        // A pattern that is malformed or too large matches nothing, not even itself.
        {"(", "(", false},
        {"*a", "*a", false},
        {"a**", "a", false},
        {"a{2,1}", "aa", false},
        {"a{1001}", letters.c_str(), false},
        {"[b-a]", "a", false},
        {"[[:oak:]]", "a", false},
        {"(a)\\1", "aa", false},
        {"a\\", "a", false},
        {deep.c_str(), "x", false},
        {nested.c_str(), "aaab", false},
        {slow.c_str(), letters.c_str(), false},
    };
    QxPattern pattern;
    for (const auto& c : cases)
        for (int turn = 0; turn < 2; ++turn)  // first compiled, then cached
            EXPECT_EQ(pattern.Match(c.expression, c.text), c.matches) << c.expression;
    EXPECT_FALSE(pattern.Match(slow.c_str(), letters.c_str()));
    EXPECT_LT(pattern.Work(), 100 * letters.size());
}

TEST(QxDerivatives, UseNeighboursAndEdges)
{
    // The values are u * u + 10 v, where u and v increase by 1 from point to point.
    const QxGrid grid = {4, 3};
    float values[12];
    for (int i = 0; i < 12; ++i)
        values[i] = ValueAt(i, 4);
    float result[12];
    QxDerivative(result, values, 1, grid, QxGridAxis::U);
    EXPECT_EQ(result[4], 0);
    EXPECT_EQ(result[5], 2);
    EXPECT_EQ(result[7], 6);
    QxDerivativeBy(result, values, values, grid);
    EXPECT_NEAR(result[6], 1, k_near);
    QxDerivative(values, values, 2, grid, QxGridAxis::V);  // in place
    EXPECT_EQ(values[0], 5);
    EXPECT_EQ(values[6], 5);
    QxDerivative(values, values, 1, {12, 1}, QxGridAxis::V);  // no neighbour
    EXPECT_EQ(values[3], 0);
}

TEST(QxDerivatives, ReadOnlyActivePoints)
{
    // The values are u * u + 10 v where the mask is set, and NaN elsewhere.
    const QxGrid grid = {5, 2};
    const bool mask[] = {true, true, false, true, true, true, false, true, true, true};
    float values[10];
    for (int i = 0; i < 10; ++i)
        values[i] = mask[i] ? ValueAt(i, 5) : NAN;
    const QxPointsIf<bool[10]> where = {mask, true};
    struct Row {
        int point;
        float alongU;
        float alongV;
    };
    static const Row rows[] = {{0, 1, 10}, {1, 1, 0}, {3, 7, 10},
                               {5, 0, 10}, {7, 4, 0}, {8, 6, 10}};
    float alongU[10];
    float alongV[10];
    QxDerivative(alongU, values, 1, grid, QxGridAxis::U, where);
    QxDerivative(alongV, values, 1, grid, QxGridAxis::V, where);
    for (const Row& row : rows) {
        EXPECT_EQ(alongU[row.point], row.alongU) << row.point;
        EXPECT_EQ(alongV[row.point], row.alongV) << row.point;
    }
}

TEST(QxDerivatives, MayWriteNormalsAndAreasInPlace)
{
    for (const QxGrid& grid :
         {QxGrid{1, 1}, QxGrid{1, 4}, QxGrid{5, 1}, QxGrid{2, 3}, QxGrid{19, 6}})
        for (const bool masked : {false, true}) {
            QxVector3 points[114] = {};
            char mask[114] = {};
            for (unsigned int i = 0; i < grid.Size(); ++i) {
                const auto turn = static_cast<float>(i);
                mask[i] = masked && i % 3 == 1 ? 1 : 0;
                points[i] = mask[i] != 0 ? QxVector3{NAN, NAN, NAN}
                                         : QxVector3{turn * turn, 7 - turn, turn / 3};
            }
            const char* const off = mask;
            const QxVector3* const from = points;
            float areas[114];
            float* const areasFrom = areas;
            const QxPointsIf<const char*> where = {off, false};
            std::vector<QxVector3> alongU(grid.Size());
            std::vector<QxVector3> alongV(grid.Size());
            QxDifferences(alongU.data(), from, grid, QxGridAxis::U, where);
            QxDifferences(alongV.data(), from, grid, QxGridAxis::V, where);
            QxVector3 normals[114];
            std::copy_n(from, grid.Size(), normals);
            QxVector3* const inPlace = normals;
            if (masked) {
                QxAreaOfOperand(grid, where, areasFrom, from);
                QxNormalOfOperand(grid, where, inPlace, inPlace, 0.5f, 0.25f);
            } else {
                QxAreaOfOperand(grid, QxAllPoints(), areasFrom, from);
                QxNormalOfOperand(grid, QxAllPoints(), inPlace, inPlace, 0.5f, 0.25f);
            }
            for (unsigned int i = 0; i < grid.Size(); ++i) {
                if (!where(i))
                    continue;
                const QxVector3 normal = QxCross(alongU[i] * 2, alongV[i] * 4);
                const float share = QxShareOfCell(i % grid.columns, grid.columns) *
                                    QxShareOfCell(i / grid.columns, grid.rows);
                EXPECT_EQ(areas[i], QxLength(QxCross(alongU[i], alongV[i])) * share);
                for (int k = 0; k < 3; ++k)
                    EXPECT_EQ(normals[i][k], normal[k]) << i;
            }
        }
}

TEST(QxDerivatives, AreAsExactAtTheBorderAsInside)
{
    // The points are a part of the unit sphere, whose normals equal its points.
    for (const auto& [size, degrees] :
         {std::pair{5U, 0.9}, std::pair{9U, 0.12}, std::pair{16U, 0.04}}) {
        const QxGrid grid = {size, size};
        std::vector<QxVector3> points(grid.Size());
        std::vector<QxVector3> normals(grid.Size());
        std::vector<float> areas(grid.Size());
        for (unsigned int i = 0; i < grid.Size(); ++i) {
            const double u = 1.5 * (i % size) / (size - 1);
            const double v = 0.8 + 1.5 * (i / size) / (size - 1);
            points[i] = {static_cast<float>(std::sin(v) * std::cos(u)),
                         static_cast<float>(std::sin(v) * std::sin(u)),
                         static_cast<float>(std::cos(v))};
        }
        QxCalculateNormal(normals.data(), points.data(), 1, 1, grid);
        QxVector3* const from = points.data();
        float* const to = areas.data();
        QxAreaOfOperand(grid, QxAllPoints(), to, from);
        double sum = 0;
        for (unsigned int i = 0; i < grid.Size(); ++i) {
            EXPECT_LT(QxLength(QxCross(QxNormalize(normals[i]), points[i])),
                      std::sin(degrees / 57.29578));
            sum += areas[i];
        }
        EXPECT_NEAR(sum / (1.5 * (std::cos(0.8) - std::cos(2.3))), 1, 0.03);
    }
}

TEST(QxLights, IncludeTheBorderOfACone)
{
    const QxVector3 axis = {0.3f, -1.1f, 0.7f};
    struct Row {
        QxVector3 direction;
        float angle;
        bool within;
    };
    const Row rows[] = {
        {axis * 3, 0, true},
        {QxNormalize(axis), 0, true},
        {axis + QxVector3{0.001f, 0, 0}, 0, false},
        {-axis, QX_PI_FLOAT, true},
        {-QxNormalize(axis), 3.14159f, false},
        {-axis, 2 * QX_PI_FLOAT, true},
        {{1.1f, 0.3f, 0}, QX_PI_FLOAT / 2 + 1e-6f, true},
        {{1.1f, 0.2f, 0}, 1, false},
        {axis, NAN, false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(QxIsWithinCone(row.direction, axis, row.angle), row.within)
            << row.direction.x << ' ' << row.angle;
}

TEST(QxLights, PhongIgnoresLightFromBehindTheSurface)
{
    // The light grazes the surface from just above or just below, and is seen from the other side.
    QxRGBColor Cl = {1, 1, 1};
    for (const float height : {0.05f, -0.05f}) {
        QxVector3 L = {1, 0, height};
        const QxLightInput light = {&L, &Cl, &Cl};
        const QxVector3 P = {0, 0, 0};
        const QxPhongCall phong(QxLights{nullptr, &P, &light, 1});
        EXPECT_EQ(phong(0, {0, 0, 1}, {-1, 0, 0.05f}, 2).r > 0.9f, height > 0) << height;
        EXPECT_EQ(phong(0, {0, 0, 1}, {-1, 0, 0.05f}, 2).r == 0, height < 0) << height;
    }
}

TEST(QxCalls, ClampNumbersOutOfRange)
{
    const QxVector3 triple = {1, 2, 3};
    const float infinity = INFINITY;
    EXPECT_EQ(QxComponent(triple, NAN), 1);
    EXPECT_EQ(QxComponent(triple, infinity), 3);
    EXPECT_EQ(QxComponent(triple, -1e30f), 1);
    EXPECT_EQ(QxComponent(triple, 1.9f), 2);
    QxMatrix44 matrix = QxMatrix44::Identity();
    QxSetComponent(matrix, NAN, 1e30f, 5);
    EXPECT_EQ(matrix[0][3], 5);
    EXPECT_EQ(QxPack(NAN, 2, -1, 1), QxPack(0, 1, 0, 1));
}
