// Checks patches: derivatives by differences of neighbouring points, the distance of points from
// the middle of a sphere, and `IsHidden` by looking at each point.

#include <gtest/gtest.h>

#include "picture/SqxPatch.h"

namespace {

constexpr SqxShapeKind k_kinds[] = {SqxShapeKind::Sphere, SqxShapeKind::Square,
                                    SqxShapeKind::Torus};

void ExpectNear(const QxVector3& value, const QxVector3& expected, const char* what)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(value[i], expected[i], 0.02F) << what << " " << i;
}

bool ShowsOuterSide(const SqxPatch& patch)
{
    QxHostGrid grid(patch.Layout().columns, patch.Layout().rows);
    patch.Place(grid);
    const QxHiddenVariables at = grid.Hidden();
    for (std::size_t i = 0; i < grid.Size(); ++i)
        if (QxDot(at.N[i], at.I[i]) < 0)
            return true;
    return false;
}

}  // namespace

TEST(SqxPatch, PlacesPointsWithTheirDerivatives)
{
    constexpr float k_step = 0.001F;
    for (const SqxShapeKind kind : k_kinds) {
        SCOPED_TRACE(static_cast<int>(kind));
        const SqxShape shape(kind);
        QxHostGrid grid(9, 5);
        SqxPatch(shape, grid.Layout(), 0.3F, 0.4F, k_step, k_step).Place(grid);
        EXPECT_EQ(grid.Values<float>("du")[0], k_step);
        EXPECT_EQ(grid.Values<float>("dv")[0], k_step);
        const QxHiddenVariables at = grid.Hidden();
        const std::size_t i = 2 * 9 + 4;
        EXPECT_FLOAT_EQ(at.u[i], 0.304F);
        EXPECT_FLOAT_EQ(at.v[i], 0.402F);
        EXPECT_EQ(at.s[i], at.u[i]);
        EXPECT_EQ(at.t[i], at.v[i]);
        EXPECT_TRUE(at.I[i] == at.P[i]);
        EXPECT_TRUE(at.N[i] == QxCross(at.dPdu[i], at.dPdv[i]));
        EXPECT_TRUE(at.Ng[i] == at.N[i]);
        ExpectNear(at.dPdu[i], (at.P[i + 1] - at.P[i - 1]) * (0.5F / k_step), "dPdu");
        ExpectNear(at.dPdv[i], (at.P[i + 9] - at.P[i - 9]) * (0.5F / k_step), "dPdv");
    }
}

TEST(SqxPatch, LiesOnTheShape)
{
    const SqxShape sphere(SqxShapeKind::Sphere);
    QxHostGrid grid(7, 7);
    SqxPatch(sphere, grid.Layout(), 0.0F, 0.1F, 1 / 6.0F, 0.8F / 6).Place(grid);
    const QxHiddenVariables at = grid.Hidden();
    const QxVector3 middle = {0, 0, SqxShape::k_distance};
    for (std::size_t i = 0; i < grid.Size(); ++i) {
        EXPECT_NEAR(QxLength(at.P[i] - middle), 1, 1e-5F);
        EXPECT_GT(QxDot(at.N[i], at.P[i] - middle), 0) << "normals lead outwards";
    }
}

// IsHidden only looks at the columns that face the camera most and least.
TEST(SqxPatch, IsHiddenIfNoPointShowsItsOuterSide)
{
    constexpr unsigned int k_pieces = 24;
    for (const SqxShapeKind kind : k_kinds) {
        const SqxShape shape(kind);
        int hidden = 0;
        for (unsigned int i = 0; i < k_pieces * k_pieces; ++i) {
            const float u = static_cast<float>(i % k_pieces) / k_pieces;
            const unsigned int row = i / k_pieces;
            const float v = static_cast<float>(row) / k_pieces;
            const float step = 1.0F / k_pieces / 10;
            const SqxPatch patch(shape, {13, 13}, u - step, v - step, step, step);
            EXPECT_EQ(patch.IsHidden(), !ShowsOuterSide(patch)) << u << " " << v;
            hidden += patch.IsHidden() ? 1 : 0;
        }
        if (kind == SqxShapeKind::Square)
            EXPECT_EQ(hidden, 0);
        else
            EXPECT_GT(hidden, k_pieces * k_pieces / 5);
    }
}
