// Checks what a session shows while sources and values change.

#include "ViewedShaders.h"

#include <cstdlib>

#include "sqxshade/SqxShadeCommand.h"

namespace {

class SqxViewSessionTest : public ViewedShaders {};

bool Contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

TEST_F(SqxViewSessionTest, FollowsTheSourceAndItsHeaders)
{
    m_folder.Write("tint.h", "#define TINT color(1, 0, 0)\n");
    m_folder.Write("a.sl", "#include \"tint.h\"\nsurface a() { Ci = TINT; Oi = 1; }\n");
    View({"a.sl"});
    const std::vector<char> red = NextPicture();
    m_folder.Write("tint.h", "#define TINT color(0, 0, 1)\n");
    const std::vector<char> blue = NextPicture(red);
    m_folder.Write("a.sl", "#include \"tint.h\"\nsurface a() { Ci = TINT / 2; Oi = 1; }\n");
    NextPicture(blue);
}

TEST_F(SqxViewSessionTest, NoticesAHeaderThatIsFoundBeforeAnother)
{
    std::filesystem::create_directory("far");
    m_folder.Write("far/tint.h", "#define TINT color(1, 0, 0)\n");
    m_folder.Write("a.sl", "#include \"tint.h\"\nsurface a() { Ci = TINT; Oi = 1; }\n");
    View({"-I", "far", "a.sl"});
    const std::vector<char> red = NextPicture();
    m_folder.Write("tint.h", "#define TINT color(0, 0, 1)\n");
    NextPicture(red);
}

TEST_F(SqxViewSessionTest, ShowsTheReportAndKeepsTheLastPicture)
{
    m_folder.Write("a.sl", k_flat);
    View({"a.sl"});
    const std::vector<char> good = NextPicture();
    m_folder.Write(
        "a.sl", "surface flat(float Kd = 0.5;)\n{\n    float x = 1;\n    Ci = Kd * nothing;\n}\n");
    const std::string state = WaitFor("\"isRefused\":true");
    EXPECT_TRUE(Contains(state, "a.sl:4: ERROR")) << state;
    EXPECT_TRUE(Contains(state, R"({"number":4,"text":"    Ci = Kd * nothing;","marked":true})"))
        << state;
    EXPECT_TRUE(Contains(state, R"({"number":2,"text":"{","marked":false})")) << state;
    EXPECT_EQ(*m_session->Picture(), good);
    EXPECT_TRUE(Contains(state, "\"name\":\"tint\"")) << "The controls stay: " << state;

    m_folder.Write("a.sl", "surface flat() { Ci = 1; Oi = 1; }\n");
    NextPicture(good);
    EXPECT_TRUE(Contains(WaitForWhole(), R"("isRefused":false,"report":"")"));
    std::filesystem::remove("a.sl");
    WaitFor("File 'a.sl' doesn't seem to exist.");
}

TEST_F(SqxViewSessionTest, NoticesAMissingHeaderThatAppears)
{
    m_folder.Write("a.sl", "#include \"late.h\"\nsurface a() { Ci = LATE; Oi = 1; }\n");
    View({"a.sl"});
    WaitFor("Cannot find the included file 'late.h'");
    m_folder.Write("late.h", "#define LATE 0.5\n");
    WaitForWhole();
}

TEST_F(SqxViewSessionTest, ShowsWarningsBesideThePicture)
{
    m_folder.Write("a.sl", "surface a(point p = 0; point q = 0) { Ci = xcomp(p + q); Oi = 1; }\n");
    View({"a.sl", "-w2"});
    const std::string state = WaitForWhole();
    EXPECT_TRUE(Contains(state, "a.sl:1: WARNING")) << state;
    EXPECT_TRUE(Contains(state, "\"isRefused\":false")) << state;
}

TEST_F(SqxViewSessionTest, KeepsValuesAsLongAsNameAndTypeStay)
{
    m_folder.Write("a.sl", k_flat);
    View({"a.sl", "--param", "Kd=0.25"});
    std::vector<char> picture = NextPicture();
    m_session->Change({{"param.0.tint", "1,0.5,0"}});
    picture = NextPicture(picture);
    m_folder.Write("a.sl", "surface flat(float other = 1; float Kd = 0.5; float tint = 1)"
                           " { Ci = other * Kd * tint; Oi = 1; }\n");
    NextPicture(picture);
    std::string state = WaitForWhole();
    EXPECT_TRUE(Contains(state, R"("default":[0.5],"value":[0.25]})")) << state;
    EXPECT_TRUE(Contains(state, "The value of 'tint' is gone")) << state;
    EXPECT_TRUE(Contains(state, "a.sl --param Kd=0.25\"")) << state;

    m_session->Change({{"reset", "0"}});
    state = WaitForWhole();
    EXPECT_FALSE(Contains(state, "\"value\"")) << state;
}

TEST_F(SqxViewSessionTest, RefusesValuesAsTheCommandLineDoes)
{
    struct {
        SqxViewChange change;
        const char* fault;
    } static const cases[] = {
        {{"param.0.Kd", "much"}, "The value of 'Kd' must be made of numbers, but is 'much'"},
        {{"param.0.Kd", "1,2"},
         "Parameter 'Kd' is a float and takes 1 numbers, but is set to '1,2'"},
        {{"param.0.names", "a"},
         "Parameter 'names' is a string[2] and takes 2 texts, but is set to 'a'"},
        {{"param.0.Ks", "1"}, "Shader 'a.sl' has no parameter 'Ks'"},
        {{"param.1.Kd", "1"}, "There is no shader for 'param.1.Kd'"},
        {{"size", "16"}, "The size must be WIDTHxHEIGHT, but is '16'"},
        {{"size", "9000x9000"}, "The width must be from 1 to 8192, but is '9000'"},
        {{"samples", "0"}, "The number of samples must be from 1 to 16, but is '0'"},
        {{"shape", "sheet"}, "There is no setting 'shape' of the value 'sheet'"},
        {{"lights", "sun"}, "A light must be 'point', 'distant' or 'ambient', but is 'sun'"},
        {{"reset", "1"}, "There is no shader '1' to reset"},
        {{"texture", "a=/etc/passwd"},
         "There is no setting 'texture' of the value 'a=/etc/passwd'"},
    };
    m_folder.Write(
        "a.sl", "surface a(float Kd = 1; string names[2] = {\"\", \"\"}) { Ci = Kd; Oi = 1; }\n");
    View({"a.sl"});
    const std::string before = WaitForWhole();
    for (const auto& one : cases)
        try {
            m_session->Change({{"size", "8x8"}, one.change});
            ADD_FAILURE() << one.change.first << "=" << one.change.second << " is taken";
        } catch (const SqxPictureError& error) {
            EXPECT_STREQ(error.what(), one.fault);
        }
    EXPECT_EQ(m_session->State(0, {}), before);
}

TEST_F(SqxViewSessionTest, ShowsTheCommandThatMakesThePicture)
{
    m_folder.Write(
        "a b.sl",
        "surface ab(string word = \"\"; color tint = 1; float w[2] = {1, 1})"
        " { Ci = tint * w[1] * diffuse(normalize(N)); if (word == \"it's\") Ci *= 2; Oi = 1; }\n");
    m_folder.Write("lamp.sl",
                   "light lamp(float k = 1) { illuminate(point \"shader\" (0, 0, 0)) Cl = k; }\n");
    View({"a b.sl", "lamp.sl"});
    std::vector<char> picture = NextPicture();
    m_session->Change(
        {{"shape", "torus"},
         {"size", "40x24"},
         {"samples", "2"},
         {"background", "0.5,0,0.25"},
         {"color", "0.5"},
         {"opacity", "0.75,1,1"},
         {"param.0.word", "it's"},
         {"param.0.tint", "1,0.1,0.333333"},
         {"param.0.w", "1,0.5"},
         {"param.1.k", "3"},
         {"lights", "ambient:color=0.1,0.2,0.3 distant:from=1,1,-1:to=0,0,0.5:intensity=0.5 "
                    "point:from=0,3,-2"}});
    picture = NextPicture(picture);
    const std::string state = WaitForWhole();
    const std::string key = "\"command\":\"sqxshade ";
    const std::size_t begin = state.find(key) + key.size();
    std::string words = state.substr(begin, state.rfind('"') - begin);
    for (std::size_t i = words.find("\\\\"); i != std::string::npos; i = words.find("\\\\", i + 1))
        words.erase(i, 1);  // JSON doubles each backslash
    ASSERT_EQ(std::system((SLC_SQXSHADE " " + words).c_str()), 0) << words;
    const std::string made = m_folder.Read("a b.png");
    EXPECT_EQ(std::string(picture.begin(), picture.end()), made) << words;
}

TEST_F(SqxViewSessionTest, GivesDefaultValuesInTheSpaceOfThePicture)
{
    m_folder.Write(
        "a.sl",
        "surface a(point p = point \"world\" (0, 1, 0); color c = color \"hsv\" (0, 1, 0.5);"
        " varying float v = s) { Ci = c * ycomp(p) * v; Oi = 1; }\n");
    View({"a.sl"});
    const std::string state = WaitForWhole();
    EXPECT_TRUE(Contains(state, R"("space":"world","default":[0,1,5])")) << state;
    EXPECT_TRUE(Contains(state, R"("space":"hsv","default":[0.5,0,0])")) << state;
    EXPECT_TRUE(Contains(state, R"("varying":true,"output":false,"space":"","default":null)"))
        << state;
}

TEST_F(SqxViewSessionTest, GivesDefaultValuesInTheSpacesOfANewSize)
{
    m_folder.Write("a.sl", "surface a(point p = point \"raster\" (4, 4, 0)) { Ci = xcomp(p); }\n");
    View({"a.sl"});
    const std::string small = WaitForWhole();
    EXPECT_TRUE(Contains(small, R"("default":[-0.12820512,0.12820512,1])")) << small;
    m_session->Change({{"size", "32x32"}});
    const std::string large = WaitForWhole();
    EXPECT_TRUE(Contains(large, R"("default":[-0.19230768,0.19230768,1])")) << large;
}

TEST_F(SqxViewSessionTest, StopsAnEndlessShader)
{
    constexpr const char* k_endless =
        "surface a() { float x = 0; while (x < 1) x *= 1; Ci = x; }\n";
    m_folder.Write("a.sl", k_endless);
    View({"a.sl", "--time-limit", "1"});
    WaitFor("The picture was not whole after 1 s and was ended");
    m_folder.Write("a.sl", k_flat);
    WaitForWhole();
}

TEST_F(SqxViewSessionTest, StopsThePictureAfterAnEdit)
{
    m_folder.Write("a.sl", "surface a() { float x = 0; while (x < 1) x *= 1; Ci = x; }\n");
    View({"a.sl", "--time-limit", "3600"});
    WaitFor("\"isCompiled\":true,\"isRefused\":false");
    m_folder.Write("a.sl", k_flat);
    WaitForWhole();
}

TEST_F(SqxViewSessionTest, ReportsShadersThatDoNotGoTogether)
{
    m_folder.Write("a.sl", k_flat);
    m_folder.Write("b.sl", k_flat);
    View({"a.sl", "b.sl"});
    WaitFor("There are two shaders of the kind 'surface'");
}

TEST_F(SqxViewSessionTest, ShowsWhatShadersPrintUntilTheNextPicture)
{
    m_folder.Write("a.sl", "surface a(float rise = 1) { printf(\"u is %f\\n\", 0.5);"
                           "float x = 0; while (x < 1) x += rise; Ci = 1; Oi = 1; }\n");
    View({"a.sl", "--time-limit", "3600"});
    EXPECT_TRUE(Contains(WaitForWhole(), "\"notes\":\"u is 0.5"));
    m_session->Change({{"param.0.rise", "0"}});
    EXPECT_TRUE(Contains(m_session->State(0, {}),
                         R"("isWhole":false,"isShown":false,"fault":"","notes":"")"));
    m_session->Change({{"param.0.rise", "1"}});
    WaitForWhole();
}

TEST_F(SqxViewSessionTest, ShowsAndCountsTheCodeOfEachLevel)
{
    m_folder.Write(
        "a.sl",
        "surface a(float k = 1) { float unused = k * 2; float x = 2 * 3; Ci = x * k; Oi = 1; }\n");
    View({"a.sl"});
    WaitForWhole();
    const std::string plain = m_session->Code(0, 0);
    EXPECT_TRUE(Contains(plain, "\"version\":1,\"level\":0,\"fault\":\"\"")) << plain;
    EXPECT_TRUE(Contains(plain, "\"text\":\"main\\n")) << plain;
    // At -O2 the product of k and 2 is gone, since no code uses it.
    EXPECT_TRUE(Contains(plain, "k 2\\n")) << plain;
    EXPECT_FALSE(Contains(m_session->Code(0, 2), "k 2\\n"));
    EXPECT_TRUE(Contains(plain, R"("counts":[{"instructions":23,"parallelRuns":7,"locals":5},)"))
        << plain;

    m_folder.Write("a.sl", "surface a() { Ci = nothing; }\n");
    WaitFor("\"isRefused\":true");
    EXPECT_TRUE(Contains(m_session->Code(0, 2), "\"fault\":\"The source does not compile\""));
    EXPECT_THROW((void)m_session->Code(1, 0), SqxPictureError);
    EXPECT_THROW((void)m_session->Code(0, 4), SqxPictureError);
}

}  // namespace
