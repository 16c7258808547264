// Tests the renderer of examples/renderer: single pixels whose light can be worked out by hand,
// different numbers of threads, and what it refuses.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/wait.h>

#include "QxValues.h"
#include "helpers/ShaderFolder.h"
#include "picture/SqxPng.h"

namespace {

class Renderer : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        sm_folder = std::make_unique<ShaderFolder>();
        for (const char* name :
             {"crystal", "floor", "glow", "lamp", "mirror", "pane", "panel", "wall"})
            (void)sm_folder->Build(
                name, ShaderFolder::Read(SLC_SHADERS "/" + std::string(name) + ".sl"), "--int");
        (void)sm_folder->Build(
            "paint", "surface paint(string map = \"\") { Oi = 1; Ci = texture(map); }", "--int");
        (void)sm_folder->Build(
            "grow", "displacement grow() { P += 0.5 * normalize(N); N = calculatenormal(P); }",
            "--int");
        (void)sm_folder->Build("facing",
                               "surface facing() { Oi = 1; Ci = 0.5 + 0.5 * color(normalize(N)); }",
                               "--int");
        (void)sm_folder->Build("veil",
                               "surface veil() { color lit = 0; illuminance (P) lit += Cl;"
                               " Oi = comp(lit, 0) > 0 ? 0 : 1; }",
                               "--int");
        // The picture is red and green above blue and white.
        std::vector<unsigned char> pixels;
        for (int i = 0; i < 64; ++i) {
            const bool right = i % 8 >= 4;
            const bool lower = i >= 32;
            for (const bool channel : {right == lower, right, lower})
                pixels.push_back(channel ? 255 : 0);
        }
        SqxWritePicture("map.png", SqxEncodePng(8, 8, pixels, SqxEncoding::Srgb));
        ShaderFolder::Write(
            "slope.obj",
            "v -1 -1 2\nv 1 -1 2\nv 1 1 4\nv -1 1 4\nvt 0.4 0.9\nf 4/1 1/1 2/1 -2/-1 # a square\n");
    }
    static void TearDownTestSuite() { sm_folder.reset(); }

    /// Runs the renderer and returns its exit status, -1 if a signal ended it. Its messages are
    /// then in the file "messages".
    static int Run(const std::string& scene, const std::string& options)
    {
        ShaderFolder::Write("scene.txt", scene);
        const std::string command = SLC_RENDERER " scene.txt . " + options + " >messages 2>&1";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    static std::unique_ptr<ShaderFolder> sm_folder;
};

std::unique_ptr<ShaderFolder> Renderer::sm_folder;

// A lamp of intensity 4 at a distance of 2 lights the floor below it with 1.
const std::string k_lit = "camera at=0,1,-3 to=0\nshader w wall Kd=1\nplane w\n"
                          "shader l lamp intensity=4\nlight l at=0,2,0\n"
                          "shader p pane density=1\n";
// The ray of the pixel goes up at 45 degrees between mirrors at y = -1 and 1, and after five
// reflections it hits the plane `g`.
const std::string k_mirrors = "camera at=0 to=0,1,1\nshader m mirror Kr=0.8 Ks=0\nshader g glow\n"
                              "plane m at=0,1,0 scale=50\nplane m at=0,-1,0 scale=50\n"
                              "plane g at=0,0,10.5 turn=90,0,0\n";

struct PixelCase {
    const char* what;
    std::string scene;
    QxRGBColor expected;
};

// The camera looks along z unless the scene sets it.
const PixelCase k_pixels[] = {
    {"five mirrors", k_mirrors + "picture levels=5", {0.328F, 0.328F, 0.328F}},
    {"too many mirrors", k_mirrors + "picture levels=4", {0, 0, 0}},
    {"mirror that meets a wall",
     "camera at=-1.9999,0,0 to=0.0001,0,2\nshader m mirror Kr=1 Ks=0\nshader g glow\n"
     "plane m at=0,0,2 turn=-90,0,0\nplane g at=0.0002,0,1 turn=0,0,90",
     {1, 1, 1}},
    {"light", k_lit, {1, 1, 1}},
    {"farther light",
     "camera at=0,1,-3 to=0\nshader w wall Kd=1\nshader l lamp intensity=4\nlight l "
     "at=0,4,0\nplane w",
     {0.25F, 0.25F, 0.25F}},
    {"colored shadow",
     k_lit + "plane p at=0,1.5,0 color=1,0.5,0.25 shadow=shader",
     {1, 0.5F, 0.25F}},
    {"shadow of two panes",
     k_lit + "plane p at=0,1.5,0 color=1,0.5,0.25 shadow=shader\n"
             "plane p at=0,1.7,0 color=0.5,0.5,1 shadow=shader",
     {0.5F, 0.25F, 0.25F}},
    {"full shadow", k_lit + "sphere w at=0,1.5,0 scale=0.1", {0, 0, 0}},
    {"no shadow", k_lit + "sphere w at=0,1.5,0 scale=0.1 shadow=none", {1, 1, 1}},
    // The veil is clear where it is lit, and asks for light one level deeper than rays go.
    {"no shadow on what casts one",
     k_lit + "picture levels=0\nshader v veil\nplane v at=0,1.2,0 shadow=shader\n"
             "sphere w at=0,1.7,0 scale=0.1 shadow=none",
     {1, 1, 1}},
    {"half of an area light",
     "camera at=0,1,-3 to=0\nshader w wall Kd=1\nshader l panel intensity=4 samples=64\n"
     "light l at=0,2,0\nplane w\nplane w at=1,1,0",
     {0.5F, 0.5F, 0.5F}},
    {"light through a pane",
     "sky color=0.8,0.6,0.5\nshader p pane Kr=0 density=1\nplane p turn=90,0,0 color=0.5,1,0.2\n"
     "plane p turn=90,0,0 at=0,0,1 color=0.5,1,1",
     {0.2F, 0.6F, 0.1F}},
    {"sky hidden by half",
     "camera at=0,1,-3 to=0,0,-0.001\nshader f floor sky=1 Kd=1 Kr=0 odd=1 samples=400 even=1\n"
     "plane f scale=100\nplane f turn=90,0,0 scale=1000",
     {0.5F, 0.5F, 0.5F}},
    // Reflected and refracted rays of glass all end in the same even sky.
    {"glass in an even sky",
     "picture levels=8\ncamera at=0.4,0.3,-5 to=0.4,0.3,0\nsky color=0.7\nshader g crystal "
     "tint=1\nsphere g",
     {0.7F, 0.7F, 0.7F}},
    {"left of the sky", "camera at=0 to=-1,0.5,0\nsky map=map.png", {1, 0, 0}},
    {"lower right of the sky",
     "camera at=0 to=1,-0.5,0\nsky map=map.png color=0.5",
     {0.5F, 0.5F, 0.5F}},
    {"lower left of a texture",
     "camera at=-0.5,1,-0.501 to=-0.5,0,-0.5\nshader p paint map=map.png\nplane p",
     {0, 0, 1}},
    {"texture of a mesh", "shader p paint map=map.png\nmesh p slope.obj", {1, 0, 0}},
    {"normal of a mesh", "shader f facing\nmesh f slope.obj", {0.5F, 0.146F, 0.854F}},
    {"beside a sphere",
     "camera at=1.3,0,-5 to=1.3,0,0\nsky color=0.5\nshader f facing\nsphere f",
     {0.5F, 0.5F, 0.5F}},
    {"displaced sphere",
     "camera at=1.2,0,-5 to=1.2,0,0\nshader f facing\nshader g grow\nsphere f displacement=g",
     {0.9F, 0.5F, 0.2F}},
};

}  // namespace

TEST_F(Renderer, RendersTheLightThatOpticsPredicts)
{
    for (const PixelCase& c : k_pixels) {
        const std::string scene = std::string(c.scene) + "\npicture width=1 height=1 samples=1\n";
        ASSERT_EQ(Run(scene, "out.png"), 0) << c.what << ": " << ShaderFolder::Read("messages");
        const SqxImage image = SqxReadPng("out.png");
        ASSERT_EQ(image.values.size(), 4U);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(image.values[i], c.expected[i], 0.015F) << c.what << ", channel " << i;
    }
}

TEST_F(Renderer, RendersTheSamePictureWithAnyNumberOfThreads)
{
    const std::string scene = "picture width=50 height=40\nshader f floor sky=1\nshader l panel\n"
                              "light l at=0,2,0\nplane f scale=3\nsphere f at=0,0.5,0 scale=0.5\n";
    ASSERT_EQ(Run(scene, "one.png 1"), 0);
    ASSERT_EQ(Run(scene, "three.png 3"), 0);
    EXPECT_EQ(ShaderFolder::Read("one.png"), ShaderFolder::Read("three.png"));
}

TEST_F(Renderer, RefusesWrongScenes)
{
    const struct {
        const char* scene;
        const char* message;
    } cases[] = {
        {"shader w wall\nball w", "scene.txt:2: Unknown statement 'ball'"},
        {"plane", "scene.txt:1: 'plane' needs the name of a shader"},
        {"plane w", "scene.txt:1: There is no shader 'w'"},
        {"shader l lamp\nplane l",
         "scene.txt:2: Shader 'l' is of another kind than is needed here"},
        {"shader w wall\nshader w wall", "scene.txt:2: There are two shaders 'w'"},
        {"shader w wall Ks=1", "scene.txt:1: Shader './wall.sqx' has no parameter 'Ks'"},
        {"shader w wall Kd=1,2", "scene.txt:1: Parameter 'Kd' is a float, but is set to 2 values"},
        {"shader w wall Kd=red", "scene.txt:1: 'Kd' takes numbers, but is set to 'red'"},
        {"shader w none", "scene.txt:1: There is no shader file './none.sqx'"},
        {"shader p paint map=none.png", "scene.txt:1: Cannot read texture './none.png'"},
        {"shader w wall\n\n# a note\nplane w size=2", "scene.txt:4: 'plane' has no 'size'"},
        {"shader w wall\nplane w scale=0", "scene.txt:2: 'scale' must not be 0"},
        {"shader w wall\nplane w at=1,2", "scene.txt:2: 'at' takes one number or three"},
        {"shader w wall\nplane w at=1 at=2", "scene.txt:2: 'at' is given twice"},
        {"shader w wall\nmesh w none.obj", "scene.txt:2: Cannot read './none.obj'"},
        {"shader w wall\nmesh w bad.obj", "scene.txt:2: bad.obj:4: Damaged line"},
        {"picture width=0",
         "scene.txt:1: 'width' takes a number from 1 to 8192, but is set to '0'"},
        {"picture width=3.7", "scene.txt:1: 'width' takes a whole number, but is set to '3.7'"},
        {"picture width=", "scene.txt:1: 'width' takes numbers, but is set to ''"},
        {"camera to=0,1,-5", "scene.txt:1: The camera must not look straight up or down"},
    };
    ShaderFolder::Write("bad.obj", "v 0 0 0\nv 0 1 0\nv 1 0 0\nf 1 2 4\n");
    for (const auto& c : cases) {
        EXPECT_EQ(Run(c.scene, "refused.png"), 1) << c.scene;
        EXPECT_THAT(ShaderFolder::Read("messages"), ::testing::StartsWith(c.message)) << c.scene;
        EXPECT_FALSE(std::filesystem::exists("refused.png")) << c.scene;
    }
    EXPECT_EQ(Run("", "nofolder/picture.png"), 1) << "a picture that cannot be written";
    EXPECT_EQ(Run("", "picture.png 2 more"), 1);
}
