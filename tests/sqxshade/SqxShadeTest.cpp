// Tests the program sqxshade: single pixels of its pictures, interruption, and what it refuses.

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <png.h>
#include <sys/wait.h>

#include "helpers/ShaderFolder.h"

namespace {

constexpr const char* k_look = R"(
surface look(string mode = "ramp"; color tint = 1; float weights[2] = {0, 1}; point place = 0)
{
    Oi = Os;
    if (mode == "ramp")
        Ci = color(s, t, weights[0]);
    else if (mode == "place")
        Ci = color(xcomp(transform("NDC", P)), ycomp(transform("raster", P)) / 64, 0);
    else
        Ci = Cs * tint * diffuse(normalize(N));
}
)";

struct Pixel {
    int r;
    int g;
    int b;
};

class SqxShade : public ::testing::Test {
protected:
    /// Runs the program in the folder. Returns the exit status of the shell, or -1 if a signal
    /// ended it.
    int Run(const std::string& arguments)
    {
        const std::string command = "cd '" + m_folder.Path().string() +
                                    "' && SLC_CC_OPTIONS=-O0 " SLC_SQXSHADE " " + arguments +
                                    " >messages 2>&1";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    std::string Messages() const
    {
        std::ifstream file(m_folder.Path() / "messages");
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] std::string Code(const std::string& name, const std::string& source) const
    {
        return m_folder.Build(name, source, "--int");
    }
    void WriteSource(const std::string& name, const std::string& source) const
    {
        std::ofstream(m_folder.Path() / name) << source;
    }
    /// Shades 64 times 64 pixels on black and reads the picture into `m_bytes`. By default it is
    /// linear: a byte is the value of the shader, clamped to 1, times 255.
    void Shade(const std::string& arguments, const std::string& encoding = "--linear ")
    {
        ASSERT_EQ(Run("--size 64x64 --samples 1 --background 0 -o out.png " + encoding + arguments),
                  0)
            << Messages();
        m_bytes = ReadPng("out.png", 64, 64);
    }
    /// Returns the bytes of a picture, which must have the given size.
    std::vector<unsigned char> ReadPng(const std::string& name, unsigned int width,
                                       unsigned int height) const
    {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        const std::string path = m_folder.Path() / name;
        EXPECT_TRUE(png_image_begin_read_from_file(&image, path.c_str())) << image.message;
        EXPECT_EQ(image.width, width);
        EXPECT_EQ(image.height, height);
        image.format = PNG_FORMAT_RGB;
        std::vector<unsigned char> bytes(std::size_t{3} *
                                         std::max(width * height, image.width * image.height));
        EXPECT_TRUE(png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr));
        return bytes;
    }
    /// Writes a PNG file of four channels with as many rows as there are bytes for.
    void WritePng(const std::string& name, unsigned int width,
                  const std::vector<unsigned char>& bytes) const
    {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        image.width = width;
        image.height = static_cast<unsigned int>(bytes.size() / 4 / width);
        image.format = PNG_FORMAT_RGBA;
        const std::string path = m_folder.Path() / name;
        ASSERT_TRUE(png_image_write_to_file(&image, path.c_str(), 0, bytes.data(), 0, nullptr));
    }
    [[nodiscard]] std::string PictureFile() const
    {
        return ShaderFolder::Read(m_folder.Path() / "out.png");
    }
    Pixel At(int x, int y) const
    {
        const unsigned char* bytes = m_bytes.data() + 3 * (64 * y + x);
        return {bytes[0], bytes[1], bytes[2]};
    }

    ShaderFolder m_folder;
    std::vector<unsigned char> m_bytes;
};

constexpr int k_middle = 32;
constexpr int k_high = 18;  // up or to the left on the shape
constexpr int k_low = 46;

}  // namespace

TEST_F(SqxShade, ShowsASourceAndItsParameters)
{
    WriteSource("look.sl", k_look);
    Shade("--square look.sl");
    EXPECT_EQ(At(1, 1).r + At(1, 1).g + At(1, 1).b, 0) << "the background";
    EXPECT_LT(At(k_high, k_middle).r + 40, At(k_low, k_middle).r) << "s leads to the right";
    EXPECT_LT(At(k_middle, k_high).g + 40, At(k_middle, k_low).g) << "t leads down";
    EXPECT_EQ(At(k_middle, k_middle).b, 0);

    Shade("--param weights=1,0 --square look.sl");
    EXPECT_EQ(At(k_middle, k_middle).b, 255);

    const std::string picture = PictureFile();
    Shade("--param weights=1,0 --square --dso look.sl");
    EXPECT_EQ(PictureFile(), picture) << "a shared object gives the same";

    Shade("--param mode=place look.sl");
    EXPECT_NEAR(At(k_low, k_high).r, 4 * k_low, 4) << "where it is on the picture";
    EXPECT_NEAR(At(k_low, k_high).g, 4 * k_high, 4);

    Shade("look.sl --param mode=lit --param tint=0.5,0,0.25");
    EXPECT_EQ(At(1, 1).r, 0) << "the background";
    EXPECT_GT(At(k_high, k_high).r, At(k_low, k_low).r + 40) << "the light is at the upper left";
    EXPECT_EQ(At(k_high, k_high).g, 0);
    EXPECT_NEAR(At(k_high, k_high).b, At(k_high, k_high).r / 2.0, 6);

    Shade("look.sl --param mode=lit --color 0,1,0 --light distant:from=1,-1,-1:intensity=0.5");
    EXPECT_LT(At(k_high, k_high).g + 40, At(k_low, k_low).g);
    EXPECT_EQ(At(k_low, k_low).r, 0);
}

TEST_F(SqxShade, FindsHeadersAndLibrariesAsTheCompilerDoes)
{
    std::filesystem::create_directory(m_folder.Path() / "my headers");
    WriteSource("my headers/level.h", "#define LEVEL LOW + ramp(0, steps)");
    WriteSource("stairs.sl",
                "#include \"level.h\"\nsurface stairs() { color steps[3] = {0.5, 0, 0}; "
                "Oi = 1; Ci = LEVEL; }");
    std::filesystem::copy(SLC_PATTERNS, m_folder.Path() / "patterns.so");
    for (const char* kind : {"", " --dso"}) {
        Shade("--square -I 'my headers' -D 'LOW=0 + 0.25' stairs.sl" + std::string(kind));
        EXPECT_NEAR(At(k_middle, k_middle).r, 191, 1) << kind;
    }
    WriteSource("stairs.sl", "surface stairs() { Ci = missing; }");
    EXPECT_EQ(Run("./stairs.sl"), 1);
    EXPECT_TRUE(Messages().starts_with("./stairs.sl: In function stairs")) << Messages();
}

TEST_F(SqxShade, RunsEachKindOfShader)
{
    Shade(Code("lamp", "light lamp() { solar(vector(0, 1, 0), 0) { Cl = 1; } }"));
    EXPECT_LT(At(k_middle, k_high).r, At(k_middle, k_low).r) << "lit from below";

    // The sphere grows, except where it is pressed flat, and the moved surface is lit.
    Shade(Code("press", R"(displacement press() {
              point p = transform("world", P);
              P = transform("world", "current", 1.2 * point(xcomp(p), ycomp(p), max(zcomp(p), 0)));
          })") +
          " --light distant:from=0,0,-1:to=0,0,0");
    const Pixel face = At(k_high, k_middle);
    EXPECT_GT(face.r, 150);
    EXPECT_NEAR(face.r, At(k_low, k_high).r, 8) << "all normals lead to the camera";
    EXPECT_GT(At(3, k_middle).r, 0) << "beyond the sphere's edge";

    Shade(Code("mist", "volume mist() { Ci = color(0, 0, length(I) / 8); }") + " " +
          m_folder.Build("cover", "imager cover() { Ci += (1 - alpha) * color(1, 0, 0); }"));
    EXPECT_NEAR(At(k_middle, k_middle).b, 4 * 255 / 8.0, 8);
    EXPECT_EQ(At(k_middle, k_middle).r, 0);
    EXPECT_EQ(At(1, 1).r, 255);
}

TEST_F(SqxShade, EncodesForScreens)
{
    const std::string gray =
        Code("gray", "surface gray() { Ci = color(0.5, 0.001, 2); Oi = 1; }") + " --square";
    Shade(gray, "");
    EXPECT_EQ(At(k_middle, k_middle).r, 188);
    EXPECT_EQ(At(k_middle, k_middle).g, 3);
    EXPECT_EQ(At(k_middle, k_middle).b, 255);
    Shade(gray);
    EXPECT_EQ(At(k_middle, k_middle).r, 128);

    Shade(Code("white", R"(surface white() {
              normal n = normalize(N); Ci = ambient() + diffuse(n); Oi = 1; })"));
    int brightest = 0;
    for (const unsigned char byte : m_bytes)
        brightest = std::max<int>(brightest, byte);
    EXPECT_LT(brightest, 255) << "the default lights clip nothing";
    EXPECT_GT(brightest, 220);
}

TEST_F(SqxShade, ShowsFilesAsTextures)
{
    const std::vector<unsigned char> pixels = {255, 0,   0, 255, 0, 255, 0, 255,
                                               255, 255, 0, 51,  0, 0,   0, 51};
    WritePng("four.png", 2, pixels);
    std::vector<unsigned char> stripes;
    for (int i = 0; i < 64 * 4; ++i)
        stripes.push_back(i / 4 % 2 ? 255 : 0);
    WritePng("stripes.png", 64, stripes);
    const std::string shader = Code("look", R"(
        surface look(string name = "four"; float often = 1; float channel = 0) {
            Ci = texture(name, often * s, often * t) + color(0, 0, texture("four"[3], s, t)); Oi = 1; })");
    Shade(shader + " --square --texture four=four.png --texture fine=stripes.png");
    EXPECT_NEAR(At(k_high, k_high).r, 255, 30) << "between the middles of its pixels it is mixed";
    EXPECT_LT(At(k_high, k_high).g, 60);
    EXPECT_GT(At(k_low, k_high).g, 200);
    EXPECT_NEAR(At(k_high, k_low).g, 51, 12) << "colors are those times their opacity";
    EXPECT_GT(At(k_high, k_high).b, 200) << "the fourth channel, opacity";
    EXPECT_LT(At(k_high, k_low).b, 100);

    Shade(shader + " --square --texture fine=stripes.png --param name=fine --param often=9");
    for (const int x : {k_high, k_middle, k_low})
        EXPECT_NEAR(At(x, k_middle).r, 128, 4) << "far smaller than a pixel: the mean of the light";
    Shade(shader + " --square");
    EXPECT_NEAR(At(k_middle - 3, k_middle - 3).r, 230, 1) << "a check without a file";
}

TEST_F(SqxShade, RendersTheSamePictureOnAnyNumberOfCores)
{
    const std::string shader = Code("dust", R"(
        surface dust() { Ci = Cs * random() * diffuse(normalize(N)); Oi = 1;
                         if (s > 0.48 && s < 0.52) printf("%f %f\\n", s, t); })");
    Shade("--threads 1 " + shader);
    const std::string picture = PictureFile();
    const std::string messages = Messages();
    EXPECT_GT(messages.size(), 100U);
    for (const char* threads : {"2", "7"}) {
        Shade(std::string("--threads ") + threads + " " + shader);
        EXPECT_EQ(PictureFile(), picture) << threads;
        EXPECT_EQ(Messages(), messages) << threads;
    }
}

TEST_F(SqxShade, PutsPicturesSideBySide)
{
    WriteSource("red.sl", "surface red() { Ci = color(1, 0, 0); Oi = 1; }");
    WriteSource("blue.sl", "surface blue() { Ci = color(0, 0, 1); Oi = 1; }");
    WriteSource("lamp.sl", "light lamp() { solar(vector(0, 0, 1), 0) { Cl = color(0, 1, 0); } }");
    ASSERT_EQ(Run("--sheet --square --size 32x32 --samples 1 -o out.png red.sl blue.sl lamp.sl"), 0)
        << Messages();
    const std::vector<unsigned char> pixels =
        ReadPng("out.png", 2 * 32 + 3 * 6, 2 * (32 + 11 + 6) + 6);
    const auto at = [&](int x, int y) { return pixels.data() + (y * 82 + x) * 3; };
    EXPECT_EQ(at(22, 22)[0], 255);
    EXPECT_EQ(at(60, 22)[2], 255);
    EXPECT_GT(at(22, 71)[1], 100) << "each shader is alone";
    EXPECT_EQ(at(22, 71)[0], 0);
}

TEST_F(SqxShade, LeavesNoFilesWhenItIsInterrupted)
{
    WriteSource("a.sl", "surface a() { Ci = 1; }");
    const std::filesystem::path temporary = m_folder.Path() / "temporary";
    std::filesystem::create_directory(temporary);
    setenv("TMPDIR", temporary.c_str(), 1);
    setenv("SLC_CC_COMMAND", "kill -INT $PPID; sleep 1", 1);
    EXPECT_EQ(Run("--dso a.sl"), 128 + SIGINT);
    unsetenv("TMPDIR");
    unsetenv("SLC_CC_COMMAND");
    EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

TEST_F(SqxShade, RefusesWrongCommandLines)
{
    (void)m_folder.Build("look", k_look);
    std::filesystem::rename(m_folder.Path() / "look.sqx", m_folder.Path() / "good.sqx");
    WriteSource("bad.sl", "surface bad() { Ci = nothing; }");
    const struct {
        int status;  // 2 if the command line itself is wrong
        const char* arguments;
        const char* message;  // a part of it
    } cases[] = {
        {2, "", "No shader is given"},
        {2, "--param a=1", "No shader is given"},
        {2, "--tilt good.sqx", "Unknown option '--tilt'"},
        {2, "--square=1 good.sqx", "Unknown option '--square=1'"},
        {2, "good.sqx --size", "Option '--size' needs WIDTHxHEIGHT after it"},
        {2, "good.sqx --size 20", "The size must be WIDTHxHEIGHT, but is '20'"},
        {2, "good.sqx --size 20x0", "The height must be from 1 to 8192, but is '0'"},
        {2, "good.sqx --samples=x", "The number of samples must be from 1 to 16, but is 'x'"},
        {2, "good.sqx --size 8000x8000", "too large for 3 samples"},
        {2, "good.sqx --background 1,2", "The background must have 3 numbers, but is '1,2'"},
        {2, "good.sqx --color red", "The color must be made of numbers, but is 'red'"},
        {2, "good.sqx --light lamp", "A light must be 'point', 'distant' or 'ambient'"},
        {2, "good.sqx --light point:to=1,1,1", "A light of kind 'point' has no 'to'"},
        {2, "good.sqx --light distant:from=0,0,0", "must differ"},
        {2, "good.sqx --light point:intensity=1,2,3", "must be one number, but is '1,2,3'"},
        {2, "good.sqx --texture wood", "A texture must be NAME=VALUE, but is 'wood'"},
        {2, "good.sqx --param tint", "A parameter must be NAME=VALUE, but is 'tint'"},
        {1, "good.sqx --param Kd=1", "Shader 'good.sqx' has no parameter 'Kd'"},
        {1, "good.sqx --param tint=red", "The value of 'tint' must be made of numbers"},
        {1, "good.sqx --param tint=1,2",
         "'tint' is a color and takes 3 numbers, but is set to '1,2'"},
        {1, "good.sqx --param weights=1", "'weights' is a float[2] and takes 2 numbers"},
        {1, "good.sqx good.sqx", "There are two shaders of the kind 'surface'"},
        {1, "good.sqx missing.sl", "There is no shader 'missing.sl'"},
        {1, "missing.sqx", "There is no shader file 'missing.sqx'"},
        {1, "bad.sl", "Shader 'bad.sl' does not compile"},
        {1, "good.sqx --texture wood=missing.png", "Cannot read texture 'missing.png'"},
        {1, "good.sqx --texture wood=bad.sl", "Cannot read texture 'bad.sl'"},
        {1, "good.sqx -o missing/out.png", "Cannot write 'missing/out.png': No such file"},
        {1, "good.sqx -o .", "Cannot write '.': Is a directory"},
        {1, "good.sqx -o /dev/full", "Cannot write '/dev/full'"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Run("--size 8x8 -o out.png " + std::string(c.arguments)), c.status)
            << c.arguments;
        EXPECT_NE(Messages().find(c.message), std::string::npos) << c.arguments << '\n'
                                                                 << Messages();
        EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "out.png")) << c.arguments;
    }
    EXPECT_EQ(Run("--help"), 0);
    EXPECT_NE(Messages().find("A displacement shader moves its points"), std::string::npos);
}
