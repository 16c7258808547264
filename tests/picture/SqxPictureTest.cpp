// Tests the rendering of pictures: coarse pictures, texts of shaders, prepared films, how rendering
// ends, the directions of u, v and normals, and wrong settings.

#include <gtest/gtest.h>

#include "helpers/ShaderFolder.h"
#include "picture/SqxPicture.h"

namespace {

class Picture : public ::testing::Test {
protected:
    SqxPictureSettings Settings(const char* source)
    {
        SqxPictureSettings settings;
        settings.shaders.push_back({QxShader::Open(m_folder.Build("test", source, "--int")), {}});
        settings.width = 100;
        settings.height = 80;
        settings.samples = 2;
        return settings;
    }

    ShaderFolder m_folder;
};

constexpr const char* k_ramp = "surface test() { Oi = 1; Ci = color(s, t, 0.5); }";

}  // namespace

TEST_F(Picture, ShowsCoarseOnesFirst)
{
    SqxPicture picture(Settings(k_ramp));
    std::vector<unsigned int> widths;
    std::vector<unsigned char> last;
    SqxPicture::Watch watch;
    watch.coarseFirst = true;
    watch.show = [&] {
        widths.push_back(picture.Pixels().width);
        last = picture.Bytes(SqxEncoding::Linear);
        ASSERT_EQ(last.size(), 100U * 80 * 3);
        const unsigned char* middle = last.data() + (40 * 100 + 50) * 3;
        EXPECT_EQ(middle[2], 128) << widths.back();
        EXPECT_NEAR(middle[0], 128, 30) << widths.back();
    };
    EXPECT_EQ(picture.Render(watch), SqxPictureEnd::Whole);
    EXPECT_EQ(widths, (std::vector{13U, 50U, 100U, 100U}));

    // The final picture is the same as without the coarse ones.
    SqxPicture plain(Settings(k_ramp));
    EXPECT_EQ(plain.Render({}), SqxPictureEnd::Whole);
    EXPECT_EQ(plain.Bytes(SqxEncoding::Linear), last);
}

TEST_F(Picture, ReportsTheTextsOfTheFinalPassOnly)
{
    SqxPictureSettings settings = Settings(k_ramp);
    settings.shaders.push_back(
        {QxShader::Open(m_folder.Build("grade", "imager grade() { printf(\"text\"); }", "--int")),
         {}});
    SqxPicture picture(settings);
    unsigned int texts = 0;
    SqxPicture::Watch watch;
    watch.coarseFirst = true;
    watch.note = [&](const SqxNote&) { ++texts; };
    EXPECT_EQ(picture.Render(watch), SqxPictureEnd::Whole);
    EXPECT_EQ(texts, 100U * 80);
}

// Only the first rendering uses the prepared film; the second creates another.
TEST_F(Picture, IsTheSameOnAPreparedFilm)
{
    SqxPicture picture(Settings(k_ramp));
    EXPECT_EQ(picture.Render({}), SqxPictureEnd::Whole);
    const std::vector<unsigned char> plain = picture.Bytes(SqxEncoding::Linear);

    SqxPicture prepared(Settings(k_ramp));
    prepared.TakeFilm(SqxPicture::PreparedFilm(prepared.Settings()));
    SqxPicture::Watch watch;
    watch.coarseFirst = true;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(prepared.Render(watch), SqxPictureEnd::Whole);
        EXPECT_EQ(prepared.Bytes(SqxEncoding::Linear), plain) << round;
    }
}

TEST_F(Picture, StopsWhenAsked)
{
    SqxPicture picture(Settings(k_ramp));
    std::stop_source source;
    SqxPicture::Watch watch;
    watch.coarseFirst = true;
    watch.stop = source.get_token();
    int shown = 0;
    watch.show = [&] {
        if (++shown == 2)
            source.request_stop();
    };
    EXPECT_EQ(picture.Render(watch), SqxPictureEnd::Stopped);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(picture.Pixels().width, 50U) << "the last one stays";

    SqxPicture::Watch late;
    late.deadline = std::chrono::steady_clock::now();
    EXPECT_EQ(picture.Render(late), SqxPictureEnd::OutOfTime);
    EXPECT_EQ(picture.Bytes(SqxEncoding::Srgb).size(), 100U * 80 * 3) << "nothing but background";
}

TEST_F(Picture, StopsAnEndlessShader)
{
    SqxPicture picture(Settings("surface test() { while (u < 2) Ci += 0.001; Oi = 1; }"));
    SqxPicture::Watch watch;
    watch.deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(20);
    EXPECT_EQ(picture.Render(watch), SqxPictureEnd::OutOfTime);
}

// On the front of each shape u increases to the right and v downwards, and normals point to the
// camera.
TEST_F(Picture, ShadesEachShapeFromItsOuterSide)
{
    constexpr const char* k_sides = "surface test() { Oi = 1; Ci = color(xcomp(Du(P)) > 0 ? 1 : 0,"
                                    " ycomp(Dv(P)) < 0 ? 1 : 0, N . I < 0 ? 1 : 0); }";
    for (const SqxShapeKind kind :
         {SqxShapeKind::Sphere, SqxShapeKind::Square, SqxShapeKind::Torus}) {
        SqxPictureSettings settings = Settings(k_sides);
        settings.shape = kind;
        SqxPicture picture(settings);
        ASSERT_EQ(picture.Render({}), SqxPictureEnd::Whole);
        // The pixel is below the middle, where a torus shows its front.
        const std::vector<unsigned char> bytes = picture.Bytes(SqxEncoding::Linear);
        const unsigned char* front = bytes.data() + (60 * 100 + 50) * 3;
        EXPECT_EQ(std::vector(front, front + 3), std::vector<unsigned char>(3, 255))
            << static_cast<int>(kind);
    }
}

TEST_F(Picture, RefusesWrongSettings)
{
    SqxPictureSettings settings = Settings(k_ramp);
    settings.shaders[0].values.emplace_back("none", 1);
    EXPECT_THROW(SqxPicture{settings}, QxHostError);
    settings.shaders[0].values.clear();
    settings.shaders.push_back(settings.shaders[0]);
    EXPECT_THROW(SqxPicture{settings}, SqxPictureError);
}
