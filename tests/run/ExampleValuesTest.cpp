// Compares what the examples compute with values that were worked out by hand.
//
// All run in one scene, unless a case sets other values: the eye looks straight at a plane that is
// lit by one lamp. The answers of the scene are fixed, and noise is 0.5 where all coordinates are
// whole numbers. The lamp is in the direction (0, 0.8, -0.6) from every point, so that with the
// normal (0, 0, -1) the diffuse light is 0.6, and the highlight for a roughness of 0.25 is 0.64.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>

#include "QxMatrixMath.h"
#include "run/ExampleFiles.h"
#include "shaders/RunShader.h"

namespace {

class Stage : public QxShaderSupport {
public:
    void EvaluateLights(const QxVector3*, unsigned int points, QxLightInput* lights,
                        unsigned int) override
    {
        for (unsigned int i = 0; i < points; ++i) {
            lights[0].L[i] = {0, 1.6F, -1.2F};
            lights[0].Cl[i] = {1, 1, 1};
            lights[0].Ol[i] = {1, 1, 1};
        }
    }
    QxRGBColor Ambient(const QxVector3&) override { return {0.25F, 0.25F, 0.25F}; }
    QxRGBColor Texture(const QxTextureQuery&) override { return {0.5F, 0.25F, 0.75F}; }
    QxRGBColor Environment(const QxPointsQuery&) override { return {0.2F, 0.4F, 0.6F}; }
    QxRGBColor Shadow(const QxPointsQuery&) override { return {0.25F, 0.25F, 0.25F}; }
    float RayHit(const QxRayQuery&) override { return 4; }
    QxRGBColor Trace(const QxRayQuery&, float& distance) override
    {
        distance = 4;
        return {0.1F, 0.3F, 0.5F};
    }
    QxRGBColor Transmission(const QxRayQuery&) override { return {0.5F, 0.5F, 0.5F}; }
    float Occlusion(const QxRayQuery&, QxVector3& openDirection) override
    {
        openDirection = {0, 1, 0};
        return 0.25F;
    }
    QxRGBColor IndirectDiffuse(const QxRayQuery&, QxVector3& openDirection,
                               float& occlusion) override
    {
        openDirection = {0, 1, 0};
        occlusion = 0.75F;
        return {0.4F, 0.2F, 0.1F};
    }
    bool IsIndirectRay() override { return true; }
    float RayLevel() override { return 2; }
    bool Message(QxMessage, const char*, const char* name, const QxMessageValue& value) override
    {
        if (value.type == QxValueType::String) {
            const std::vector<const char*> texts(value.length, name);
            value.Store(texts.data());
            return true;
        }
        const std::vector<float> numbers(value.length * QxFloatCount(value.type), 0.5F);
        value.Store(numbers.data());
        return true;
    }
    float Depth(const QxVector3& position) override { return position.z / 2; }
    float Random() override { return 0.75F; }
    void Print(const char* text) override { m_printed += text; }

    [[nodiscard]] const std::string& Printed() const { return m_printed; }

private:
    std::string m_printed;
};

struct Setting {
    const char* name;
    std::vector<float> numbers;  // for all points, or point by point
    const char* text = nullptr;
};

// clang-format off
const Setting k_stage[] = {
    {"P",     {0, 0, 0}},      {"Ps", {0, 0, 2}},  {"I",  {0, 0, 2}},        {"E",  {0, 0, -2}},
    {"N",     {0, 0, -1}},     {"Ng", {0, 0, -1}}, {"Cs", {0.5, 0.25, 1}},   {"Os", {1, 1, 1}},
    {"s",     {0.5}},          {"t",  {0.5}},      {"u",  {0.5}},            {"v",  {0.5}},
    {"Ci",    {0.8F, 0.4F, 0.2F}},                 {"Oi", {0.5, 0.5, 0.5}},  {"alpha", {0.5}},
    {"time",  {0}},
};
// clang-format on

constexpr float k_given = std::numeric_limits<float>::quiet_NaN();  // any value is accepted

struct ValueCase {
    const char* example;
    std::vector<Setting> settings;
    const char* output;
    std::vector<float> expected;  // point by point
};

/// Returns the number of points that the expected numbers are for; 1 if the shader does not have
/// the output.
std::size_t PointsOf(const SqxShader& shader, const ValueCase& c)
{
    const std::size_t named = shader.predefinedCount + shader.parameterCount;
    for (std::size_t i = 0; i < named; ++i) {
        const SqxVariable& variable = shader.variables[i];
        if (variable.name == c.output)
            return c.expected.size() /
                   (SqxComponents(variable.type) * static_cast<std::size_t>(variable.size));
    }
    return 1;
}

void Apply(SqxMachine& machine, const Setting& setting)
{
    if (setting.text)
        machine.SetText(setting.name, setting.text);
    else
        machine.Set(setting.name, setting.numbers);
}

std::vector<float> ValuesOf(SqxMachine& machine, const char* output, std::size_t points)
{
    std::vector<float> values;
    for (std::size_t i = 0; i < points; ++i) {
        const std::vector<float> at = machine.ValueOf(output, i);
        values.insert(values.end(), at.begin(), at.end());
    }
    return values;
}

bool Agree(const std::vector<float>& values, const std::vector<float>& expected)
{
    if (values.size() != expected.size())
        return false;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!std::isnan(expected[i]) &&
            !(std::abs(values[i] - expected[i]) <= 2e-5F * std::max(1.0F, std::abs(expected[i]))))
            return false;
    return true;
}

class ExampleValues : public testing::Test {
protected:
    void Expect(const ValueCase& c)
    {
        const std::string source = m_examples.Preprocessed(m_examples.Named(c.example));
        for (int level = 0; level <= 3; ++level) {
            Stage stage;
            SqxMachine machine;
            ASSERT_TRUE(machine.LoadText(ByteCodeOf(source, level))) << machine.Message();
            const std::size_t points = PointsOf(machine.Shader(), c);
            const auto columns = m_columns ? m_columns : static_cast<unsigned int>(points);
            machine.SetGrid(columns, static_cast<unsigned int>(points) / columns);
            for (const auto& [name, toCurrent] : m_spaces)
                machine.SetSpace(name, toCurrent);
            machine.SetSupport(&stage);
            machine.SetLightCount(1);
            for (const Setting& setting : k_stage)
                Apply(machine, setting);
            for (const Setting& setting : c.settings)
                Apply(machine, setting);
            ASSERT_TRUE(machine.Run()) << c.example << ": " << machine.Message();
            const std::vector<float> values = ValuesOf(machine, c.output, points);
            EXPECT_TRUE(Agree(values, c.expected))
                << c.example << " at -O" << level << ": " << c.output << " is "
                << testing::PrintToString(values) << ", not " << testing::PrintToString(c.expected);
        }
    }
    template <std::size_t N>
    void ExpectAll(const ValueCase (&cases)[N])
    {
        for (const ValueCase& c : cases)
            Expect(c);
    }

    ExampleFiles m_examples;
    std::map<std::string, QxMatrix44> m_spaces;
    unsigned int m_columns = 0;  // of the grid; 0 for a single row
};

/// Returns the coordinate s in the middle of each of the `count` strips of a test card.
std::vector<float> Strips(int count)
{
    std::vector<float> places;
    for (int i = 0; i < count; ++i)
        places.push_back((static_cast<float>(i) + 0.5F) / static_cast<float>(count));
    return places;
}

/// Returns a color or point whose components are all `value`.
std::vector<float> Gray(float value)
{
    return {value, value, value};
}

std::vector<float> Joined(const std::vector<std::vector<float>>& parts)
{
    std::vector<float> all;
    for (const auto& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

}  // namespace

TEST_F(ExampleValues, OfSurfaces)
{
    const ValueCase cases[] = {
        {"constant", {}, "Ci", {0.5, 0.25, 1}},
        {"matte", {}, "Ci", {0.425F, 0.2125F, 0.85F}},
        {"metal", {}, "Ci", {0.28884F, 0.14442F, 0.57768F}},
        {"plastic_flat", {}, "Ci", {0.43884F, 0.30134F, 0.71384F}},
        {"velvet_flat", {}, "Ci", {0.23F, 0.115F, 0.46F}},
        {"checker_flat",
         {{"s", {0.0625F}}, {"t", {0.0625F, 0.1875F}}},
         "Ci",
         {0.477F, 0.4505F, 0.371F, 0.1325F, 0.08639F, 0.053F}},
        {"toon", {}, "Ci", {1 / 3.0F, 1 / 6.0F, 2 / 3.0F}},
        {"toon", {{"N", {0, 0.98F, -0.2F}}}, "Ci", {0.05F, 0.02F, 0.1F}},
        {"rim", {{"N", {0, 0.8F, -0.6F}}}, "Ci", {0.0256F, 0.0448F, 0.064F}},
        // The point is in the middle of a ring, where the wood is half dark.
        {"wood",
         {{"P", {0.3F, 0.4F, 0}},
          {"rings", {1}},
          {"wobble", {0}},
          {"grain", {0}},
          {"roughness", {0.25}}},
         "Ci",
         {0.494F, 0.3715F, 0.2665F}},
        // The wave has a node here.
        {"marble", {}, "Ci", {0.627072F, 0.596072F, 0.565072F}},
        {"brick", {{"t", {0.55F}}, {"shades", {0}}}, "Ci", {0.474F, 0.1975F, 0.1185F}},
        {"brick", {{"t", {0.505F}}}, "Ci", {0.395F, 0.395F, 0.395F}},
        // 4 % of the light is reflected.
        {"glass", {{"roughness", {0.25}}}, "Ci", {0.6072F, 0.812F, 0.9976F}},
        {"glass", {{"surroundings", {}, "sky"}, {"Ks", {0}}}, "Ci", {0.1904F, 0.4F, 0.58272F}},
        {"texturedplastic", {}, "Ci", {0.33134F, 0.205715F, 0.66634F}},
        {"texturedplastic",
         {{"roughmap", {}, "r"}, {"roughness", {1 / 6.0F}}},
         "Ci",
         {0.4875F, 0.361875F, 0.8225F}},
        {"carpet", {{"lean", {0}}}, "Ci", {0.24842F, 0.12421F, 0.074526F}},
        {"terrain", {}, "Ci", {0.203F, 0.174F, 0.1624F}},
        // The ground is flat, and halfway between grass and rock.
        {"terrain",
         {{"P", {0, 0.5, 0}}, {"N", {0, 1, 0}}, {"Ng", {0, 1, 0}}, {"I", {0, -2, 0}}},
         "Ci",
         {0.222F, 0.2775F, 0.148F}},
        {"carpaint", {{"Kflakes", {0}}}, "Ci", {0.355655F, 0.016007F, 0.033575F}},
        {"skydome", {}, "Ci", {0.2125F, 0.11875F, 0.725F}},
        {"skydome", {}, "hidden", {0.25}},
        // The origin never escapes, and 1 does so in the third step.
        {"mandelbrot",
         {{"centerX", {0}}, {"size", {2}}, {"s", {0.5, 1}}},
         "Ci",
         {0, 0, 0, 1, 0.392F, 0.2F}},
        // At the first point a thread of the second stripe lies over one of the first stripe; at
        // the second point a thread of the first stripe lies over one of the third.
        {"tartan",
         {{"threads", {20}}, {"s", {0.06F}}, {"t", {0.11F, 0.16F}}},
         "Ci",
         {0.567F, 0.567F, 0.504F, 0.378F, 0.0315F, 0.0315F}},
        {"cells",
         {{"frequency", {1}}, {"jitter", {0}}, {"P", {1, 0.5, 0.5}}},
         "Ci",
         {0.09075F, 0.0726F, 0.0605F}},
        // The points are on the label and beside it.
        {"sticker",
         {{"P", {0, 0, 0, 2, 0, 0}}},
         "Ci",
         {0.366814F, 0.184314F, 0.640564F, 0.366814F, 0.184314F, 0.731814F}},
        // The path through the film and back is 1/2, 1 and 3/4 of the three wavelengths.
        {"bubble",
         {{"ior", {1.5}}, {"thickness", {100}}, {"swirl", {0}}, {"wavelengths", {600, 300, 400}}},
         "Ci",
         {0.08F, 0, 0.04F}},
        {"shadowcatcher", {{"shadowcolor", {0.2F, 0.4F, 0.6F}}}, "Ci", {0.1F, 0.2F, 0.3F}},
        // The points are the corner and the middle of a dot's square.
        {"halftone",
         {{"angle", {0}}, {"ink", {0.1F, 0.2F, 0.3F}}, {"P", {0, 0, 0, 4, 4, 0}}},
         "Ci",
         {1, 1, 1, 0.1F, 0.2F, 0.3F}},
        {"inspect", {}, "Ci", {0.5, 0.5, 0}},
        {"inspect", {{"what", {}, "st"}, {"s", {0.25}}}, "Ci", {0.25, 0.5, 0}},
        {"inspect", {{"what", {}, "facing"}}, "Ci", {0, 1, 0}},
        {"inspect", {{"what", {}, "opacity"}}, "Ci", {1, 1, 1}},
        {"spots", {{"tries", {0}}}, "Ci", {0.59984F, 0.21834F, 0.19109F}},
        // The points are in the top of the letter and left of it, then left of its bar and in it.
        {"lettering",
         {{"s", {0.45F, 0.05F}}, {"t", {0.05F}}},
         "Ci",
         {0.073F, 0.073F, 0.292F, 0.73F, 0.73F, 0.6935F}},
        {"lettering",
         {{"s", {0.05F, 0.2F}}, {"t", {0.55F}}},
         "Ci",
         {0.73F, 0.73F, 0.6935F, 0.073F, 0.073F, 0.292F}},
        {"weathered", {{"roughness", {0.25}}}, "Ci", {0.402F, 0.548F, 0.475F}},
        {"weathered", {{"worn", {1}}}, "Ci", {0.292F, 0.1095F, 0.0365F}},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfThePlanet)
{
    const std::vector<Setting> calm = {{"P", {1, 0, 0}},
                                       {"octaves", {0}},
                                       {"storms", {0}},
                                       {"coverage", {-2}},
                                       {"roughness", {0.25}}};
    const auto with = [&](Setting setting) {
        std::vector<Setting> settings = calm;
        settings.push_back(std::move(setting));
        return settings;
    };
    const ValueCase cases[] = {
        // The first points are on ground of half height without clouds, so the color is halfway
        // between two of `heights`; the last is in the sea.
        {"planet", with({"sealevel", {-0.5}}), "Ci", {0.166375F, 0.196625F, 0.11495F}},
        {"planet", with({"sealevel", {-0.5}}), "height", {0.5}},
        {"planet", with({"sealevel", {-0.5}}), "cloudiness", {0}},
        {"planet", with({"sealevel", {0.4F}}), "Ci", {0.3961F, 0.4324F, 0.505F}},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfDisplacements)
{
    const ValueCase cases[] = {
        {"dented_flat", {{"Km", {0}}, {"P", {1, 2, 3}}}, "P", {1, 2, 3}},
        // The noise is 0.5 there, which displaces nothing.
        {"dented_flat", {{"P", {1, 2, 3}}}, "P", {1, 2, 3}},
        {"ripple", {}, "P", {0, 0, -0.05F}},
        {"bumps", {{"P", {1, 2, 3}}}, "P", {1, 2, 3}},
        // The first point is at the crest of a wave; the second is where the wave moves points only
        // sideways.
        {"waves",
         {{"heights", {0.1F, 0, 0, 0}}, {"lengths", {2, 1, 1, 1}}, {"P", {0.5, 0, 0, 1, 0, 0}}},
         "P",
         {0.5, 0.1F, 0, 0.9F, 0, 0}},
        {"embossed", {}, "P", {0, 0, -0.05F}},
        {"embossed", {{"truedisplace", {0}}}, "P", {0, 0, 0}},
        {"rivets", {{"s", {0.025F}}, {"t", {0.5F / 24}}}, "P", {0, 0, -0.02F}},
        {"rivets", {{"s", {0.2F, 0.25F - 1e-6F}}}, "raised", {0, -1}},
        {"raindrops", {{"fullness", {-1}}}, "wet", {0}},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfLights)
{
    const ValueCase cases[] = {
        {"ambientlight", {{"intensity", {2}}, {"lightcolor", {1, 0.5, 0}}}, "Cl", {2, 1, 0}},
        {"pointlight", {{"intensity", {8}}}, "Cl", {2, 2, 2}},
        {"pointlight", {}, "L", {0, 0, 2}},
        {"distantlight", {}, "Cl", {1, 1, 1}},
        {"distantlight", {}, "L", {0, 0, 1}},
        {"distantlight", {{"shadowmap", {}, "sun.shd"}}, "Cl", {0.75, 0.75, 0.75}},
        // The points are on the axis and outside of the cone.
        {"spotlight", {{"Ps", {0, 0, 2, 2, 0, 2}}}, "Cl", {0.25, 0.25, 0.25, 0, 0, 0}},
        {"arealight", {}, "Cl", {0.25, 0.25, 0.25}},
        {"arealight", {{"shadowmap", {}, "panel.shd"}}, "Cl", {0.1875F, 0.1875F, 0.1875F}},
        // The points are in the picture, beside it and outside of the cone.
        {"slideprojector",
         {{"Ps", {0, 0, 2, 0, 0.8F, 2, 0, 4, 2}}},
         "Cl",
         {0.5, 0.25, 0.75, 0, 0, 0, 0, 0, 0}},
        // The points are in the shadow of a rod, between two rods, and too near.
        {"blockerlight",
         {{"spacing", {0.4F}}, {"Ps", {0, 0, 2, 0.4F, 0, 2, 0, 0, 0.4F}}},
         "Cl",
         {0, 0, 0, 0.240385F, 0.216346F, 0.168269F, 0, 0, 0}},
        {"skylight", {{"Ps", {0, 3, 2}}}, "Cl", {0.1F, 0.14F, 0.2F}},
        {"skylight", {{"sky", {}, "sky.env"}}, "Cl", {0.2F, 0.4F, 0.6F}},
        {"flicker", {}, "Cl", {0.25, 0.15F, 0.075F}},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfVolumesAndImagers)
{
    const ValueCase cases[] = {
        {"fog_flat", {{"I", {0, 0, 10}}}, "Ci", {0.75F, 0.575F, 0.5F}},
        // Half of the light is lost along the ray.
        {"groundfog", {{"density", {0.3465736F}}}, "Ci", {0.8F, 0.625F, 0.55F}},
        {"groundfog", {{"density", {0.3465736F}}}, "Oi", {0.75, 0.75, 0.75}},
        // The ray takes two steps, each of which absorbs half of the light.
        {"smoke",
         {{"contrast", {0}}, {"opacity", {0.6931472F}}, {"stepsize", {1}}},
         "Ci",
         {0.95F, 0.85F, 0.8F}},
        {"smoke",
         {{"contrast", {0}}, {"opacity", {0.6931472F}}, {"stepsize", {1}}},
         "Oi",
         {0.875, 0.875, 0.875}},
        {"underwater", {{"absorption", {0.3465736F, 0, 0.6931472F}}}, "Ci", {0.4F, 0.4F, 0.2375F}},
        {"background", {}, "Ci", {0.9F, 0.55F, 0.45F}},
        {"exposure_flat",
         {{"Ci", {0.25, 0.25, 0.25}}, {"gamma", {2}}, {"warmth", {0.1F}}},
         "Ci",
         {0.595569F, 0.472842F, 0.389182F}},
        // The points are the middle and a corner of the picture.
        {"vignette",
         {{"P", {0.25, 0.25, 0, 0.5, 0.5, 0}}},
         "Ci",
         {0.8F, 0.4F, 0.2F, 0.4F, 0.2F, 0.1F}},
        {"grading", {}, "Ci", {0.8F, 0.4F, 0.2F}},
        {"grading", {{"saturation", {0.5}}}, "Ci", {0.6484F, 0.4484F, 0.3484F}},
        {"posterize", {}, "Ci", {0.75, 0.375, 0.1875}},
        {"filmgrain", {}, "Ci", {0.824999F, 0.424999F, 0.224999F}},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfCardsOfNumbers)
{
    const ValueCase cases[] = {
        {"rows/numbers",
         {{"s", Strips(30)}},
         "shown",
         {3.141593F, 90,  1, 0.523599F, -1, 1.047198F, 1,   0.785398F, 2.356194F, 0.125,
          2.718282F, 0.5, 2, 0,         -1, 0.5,       0.5, -1,        0.5,       0.75,
          0.5,       3,   1, 2,         3,  3,         0,   0.15625F,  3,         0.2F}},
        {"rows/matrices", {{"s", Strips(12)}}, "shown", {2, 6, 1, 1, 5, 8, 0.5, 8, 1, 0.5, 0, 1}},
        {"rows/texts", {}, "fits", {7}},
        {"rows/noises",
         {{"s", Strips(39)}, {"frequency", {0}}},
         "shown",
         Joined({std::vector<float>(36, 0.5), std::vector<float>(36, k_given),
                 std::vector<float>(36, 0.5), std::vector<float>(9, 0.75)})},
        {"rows/splines",
         {{"s", Strips(12)}},
         "shown",
         Joined({Gray(3),
                 {0.5, -0.0625, 0.5625, 1, 2, 0},
                 Gray(3),
                 {0.5, 0.125, 0.375},
                 {5 / 6.0F, 5 / 3.0F, 2 / 3.0F},
                 Gray(2.125),
                 {0.5, 0.25, 1, 0, 0, 0},
                 Gray(3),
                 {0.375, 0, 1},
                 {23 / 24.0F, 1, 1 / 12.0F}})},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfCardsOfColorsAndPoints)
{
    const ValueCase cases[] = {
        {"rows/colors",
         {{"s", Strips(11)}},
         "shown",
         Joined({{0.5, 0.25, 1},
                 {0.375, 0.5, 0.75},
                 {0.4375, 0.375, 0.875},
                 {0.25, 0.25, 0.5},
                 {0.25, 0.25, 0.5},
                 {0.5, 0.75, 1},
                 {13 / 18.0F, 0.75, 1},
                 {1, 0.5, 0.5},
                 {13 / 18.0F, 0.75, 1},
                 {1, 0, 0},
                 {0.5, 0.25, 1}})},
        {"rows/points",
         {{"s", Strips(22)}},
         "shown",
         Joined({{4, 5, 6},      {0, 0, 7},      {0, 0, 3},  Gray(2),   Gray(3),    Gray(3.741657F),
                 Gray(0.5),      Gray(0),        {0, 0, 1},  {0, 0, 1}, {0, 0, -1}, {0, 0, 1},
                 Gray(1 / 9.0F), Gray(1 / 9.0F), {0, 0, -1}, {0, 0, 1}, {-2, 1, 3}, {0.5, 1, 1.5},
                 {1, 1, 2},      {0, 0, 0},      {1, 2, 3},  {0, 1, 0}})},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfTheCardOfSpaces)
{
    // Each matrix transforms to the current space.
    const QxMatrix44 current = QxMatrix44::Identity();
    m_spaces = {{"shader", QxScale(current, {2, 2, 2})},
                {"object", QxScale(current, {4, 4, 4})},
                {"camera", QxScale(current, {0.5, 0.5, 0.5})},
                {"world", QxTranslate(current, {1, 0, 0})}};
    Expect({"rows/spaces",
            {{"s", Strips(19)}, {"P", {2, 4, 6}}},
            "shown",
            Joined({{1, 2, 3},
                    {0, 2, 3},
                    {1, 4, 6},
                    {1.5, 2, 3},
                    {8, 16, 24},
                    {16, 32, 48},
                    {2, 4, 6},
                    {0, 0, 1},
                    {0, 0, 1},
                    {0, 0, 8},
                    {0, 0, 16},
                    {0, 0, -2},
                    {0, 0, -2},
                    {0, 0, -0.25},
                    {0, 0, -0.125},
                    {4, 8, 12},
                    {4, 2, 12},
                    {0.25, 0.5, 0.75},
                    {0.5, 2, 3}})});
}

TEST_F(ExampleValues, OfCardsOfLightAndScene)
{
    const ValueCase cases[] = {
        {"rows/lighting",
         {{"s", Strips(7)}},
         "shown",
         Joined({Gray(0.25), Gray(0.6F), Gray(0.64F), Gray(0.64F), Gray(0.1296F), Gray(0.64F),
                 Gray(1)})},
        {"rows/rays",
         {{"s", Strips(14)}},
         "shown",
         Joined({{0.1F, 0.3F, 0.5F},
                 Gray(4),
                 {0.1F, 0.3F, 0.5F},
                 Gray(4),
                 Gray(0.5),
                 Gray(0),
                 Gray(1),
                 Gray(2),
                 Gray(0.25),
                 {0, 1, 0},
                 {0.4F, 0.2F, 0.1F},
                 {0, 1, 0},
                 Gray(0.75),
                 {0.65F, 0.45F, 0.35F}})},
        {"rows/messages", {}, "answers", {9}},
        {"rows/messages", {}, "heard", {1, 1, 2}},
    };
    ExpectAll(cases);
}

TEST_F(ExampleValues, OfDerivatives)
{
    m_columns = 3;
    const std::vector<Setting> grid = {{"u", {0, 0.5, 1, 0, 0.5, 1}}, {"v", {0, 0, 0, 1, 1, 1}}};
    const std::vector<float> row = Joined({{3, 2, 4, 0.25F, -0.0269334F, 0, 0.18F, 2},
                                           {3, 2, 4, 0.5F, 0.693933F, 0.7F, 0.595F, 2},
                                           {3, 2, 4, 0.25F, 1.03413F, 1, 0.92F, 2}});
    const std::vector<float> shades = {6.882353F, 57.058824F, 63.941176F};
    const ValueCase cases[] = {
        {"rows/derivatives", grid, "shown", Joined({row, row})},
        {"rows/derivatives", grid, "shades",
         Joined({shades, shades, shades, shades, shades, shades})},
        {"rows/derivatives",
         grid,
         "ways",
         {202, 10, 0, 202, 10, 0, 202, 10, 0, 202, 10, 0, 202, 10, 0, 202, 10, 0}},
    };
    ExpectAll(cases);
}
