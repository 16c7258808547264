// Tests how a host passes parameters and grids to shaders, and reads their results.

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "host/HostFixture.h"

INSTANTIATE_TEST_SUITE_P(Kinds, Host, ::testing::Values("--dso", "--int"),
                         [](const auto& info) { return std::string(info.param).substr(2); });

TEST_P(Host, PassesParametersInAndOut)
{
    Load(k_values);
    EXPECT_EQ(m_shader->Shader().Type(), QxShaderInterface::e_typeSurface);
    EXPECT_EQ(m_shader->Shader().Parameters().at(3).length, 2U);
    EXPECT_TRUE(m_shader->Shader().Parameters().at(7).output);
    EXPECT_TRUE(m_shader->Shader().Uses("Cs"));
    EXPECT_FALSE(m_shader->Shader().Uses("dPdu"));

    Run();
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{15});
    EXPECT_EQ(m_shader->Get("said").texts, std::vector<std::string>{"plain!"});
    EXPECT_EQ(m_shader->Get("pair").numbers, (Numbers{0, 1, 0, 1, 0, 0, 1, 1}));
    EXPECT_EQ(m_grid.Get("Oi").numbers[0], 3);

    m_shader->Set("scale", 1);
    m_shader->Set("weights", Numbers{5, 6});
    m_shader->Set("tint", QxRGBColor{1, 2, 3});
    m_shader->Set("name", "other");
    m_shader->Set("place", QxVector3{0, 0, 4});
    m_shader->Set("frame", QxMatrix44::Scaling(7));
    m_shader->SetForEachPoint("each", Numbers{1, 2, 3, 4});
    m_grid.Set("Cs", QxRGBColor{1, 0.5F, 0});
    Run();
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{22})
        << "an output has its initial value again in each run";
    EXPECT_EQ(m_shader->Get("seen").numbers, (Numbers{1, 2, 3, 2, 4, 6, 3, 6, 9, 4, 8, 12}));
    EXPECT_EQ(m_shader->Get("said").texts, std::vector<std::string>{"other!"});
    EXPECT_EQ(m_grid.Get("Oi").numbers[0], 11);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[3], (QxRGBColor{1, 1, 0}));
}

TEST_P(Host, ShadesGridsOfDifferentSizesInTurn)
{
    Load(k_values);
    QxHostGrid resized(4, 4);
    for (const unsigned int columns : {3U, 1U, 5U, 20U}) {
        QxHostGrid grid(columns, 2);
        resized.Resize(columns, 2);
        for (QxHostGrid* shaded : {&grid, &resized}) {
            m_shader->Run(*shaded, m_scene);
            EXPECT_EQ(m_shader->Get("seen").Count(), 2 * columns);
            EXPECT_EQ(m_shader->Get("seen").numbers.back(), 3);
            EXPECT_EQ(shaded->Values<float>("du").size(), 1U);
            EXPECT_EQ(shaded->Get("Cs").numbers, Numbers(6UL * columns, 1));
        }
    }
    EXPECT_THROW(resized.Resize(0, 2), QxHostError);
}

TEST_P(Host, RefusesValuesThatDoNotFit)
{
    Load(k_values);
    const struct {
        const char* name;
        QxHostValue value;
        const char* message;
    } cases[] = {
        {"scale", QxRGBColor{}, "Parameter 'scale' is a float, but is set to a color"},
        {"tint", QxVector3{}, "Parameter 'tint' is a color, but is set to a point"},
        {"name", 1, "Parameter 'name' is a string, but is set to a float"},
        {"scale", "1", "Parameter 'scale' is a float, but is set to a string"},
        {"weights", 1, "Parameter 'weights' is a float[2], but is set to 1 values"},
        {"scale", Numbers{1, 2}, "Parameter 'scale' is a float, but is set to 2 values"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOf([&] { m_shader->Set(c.name, c.value); }), c.message);
    EXPECT_NE(ErrorOf([&] { m_shader->Set("Kd", 1); }).find("has no parameter 'Kd'"),
              std::string::npos);
    EXPECT_NE(ErrorOf([&] { (void)m_shader->Get("Kd"); }), "");
    EXPECT_EQ(ErrorOf([&] {
                  m_shader->SetForEachPoint("scale", Numbers{1, 2, 3, 4});
              }),
              "Parameter 'scale' is uniform, it has one value for all points");
    m_shader->SetForEachPoint("each", Numbers{1, 2, 3});
    EXPECT_EQ(ErrorOf([&] { Run(); }), "Parameter 'each' is set to 3 values, but the grid needs 4");

    EXPECT_NE(ErrorOf([] { QxHostValue(QxValueType::Color, {1, 2}); }), "");
    EXPECT_NE(ErrorOf([&] { m_grid.Set("Cs", 1); }), "");
    EXPECT_NE(ErrorOf([&] { m_grid.Set("Kd", 1); }), "");
    EXPECT_NE(ErrorOf([&] { m_grid.Set("u", Numbers{1, 2}); }), "");
    EXPECT_NE(ErrorOf([&] { (void)m_grid.Values<float>("P"); }), "");
    EXPECT_NE(ErrorOf([] { QxHostGrid(0, 3); }), "");
    // Both sizes have more points than an index can number.
    for (const unsigned int rows : {65537U, 4000000000U}) {
        EXPECT_NE(ErrorOf([&] { QxHostGrid(65536, rows); }).find("is too large"),
                  std::string::npos);
        EXPECT_NE(ErrorOf([&] { m_grid.Resize(65536, rows); }), "");
        QxHostPoints points = m_grid;
        points.layout = {65536, rows};
        EXPECT_NE(ErrorOf([&] { m_shader->Run(points, m_scene); }), "");
    }
    EXPECT_EQ(m_grid.Layout().rows, 2U);
}

TEST_P(Host, DescribesParameters)
{
    Load(
        R"(surface test(float a = 2; point p = point "shader" (1, 2, 3); color c = color "hsv" (0, 1, 1);
                         vector v = vector "object" (0, 0, 4); normal n[2] = {0, 1}; string t = "x\"y";
                         matrix m = matrix "world" 2; varying float late = noise(u))
            { Ci = a * c + late + comp(m, 0, 0); Oi = xcomp(p) + xcomp(v) + xcomp(n[1]); if (t == "q") Oi = 0; })");
    QxMatrix44 shift = QxMatrix44::Identity();
    shift[0][0] = shift[1][1] = shift[2][2] = 3;
    for (const char* space : {"shader", "object", "world"})
        m_scene.Spaces().Define(space, QxFrame3D(shift));
    const struct {
        const char* name;
        const char* space;
        bool object;
        Numbers value;
    } rows[] = {
        {"a", "", false, {2}},
        {"p", "shader", false, {1, 2, 3}},
        {"c", "hsv", false, {1, 0, 0}},
        {"v", "object", true, {0, 0, 4}},
        {"n", "current", false, {0, 0, 0, 1, 1, 1}},
        {"t", "", false, {}},
        {"m", "world", false, {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2}},
    };
    const auto values = m_shader->Shader().Defaults();
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const QxShader::Parameter& parameter = m_shader->Shader().Parameters()[i];
        EXPECT_EQ(parameter.name, rows[i].name);
        EXPECT_EQ(parameter.space, rows[i].space) << rows[i].name;
        EXPECT_EQ(parameter.needsObjectSpace, rows[i].object) << rows[i].name;
        ASSERT_TRUE(values[i]) << rows[i].name;
        EXPECT_EQ(values[i]->numbers, rows[i].value) << rows[i].name;
    }
    EXPECT_EQ(values[5]->texts, std::vector<std::string>{"x\"y"});
    EXPECT_TRUE(m_shader->Shader().NeedsObjectSpace());
    EXPECT_FALSE(values[7]) << "it depends on the shading point";
    const auto& parameters = m_shader->Shader().Parameters();
    EXPECT_EQ(parameters[3].type, QxValueType::Vector);
    EXPECT_EQ(parameters[4].type, QxValueType::Normal);
    Run();
    EXPECT_EQ(m_shader->Get("p").numbers, (Numbers{3, 6, 9}))
        << "an instance's stands in its space";
}

TEST_P(Host, RunsOnBuffersOfTheCaller)
{
    Load(R"(surface test(varying float gain = 2; output varying color each[2] = {3, 4};
                         output float sum = 1; string t = "")
            { each[1] = gain * Cs; sum += 1; Ci = gain; Oi = color(comp(N, 0), comp(N, 1), comp(N, 2)); })");
    std::vector<QxRGBColor> Cs(2, {1, 2, 3});
    std::vector<QxRGBColor> Ci(2);
    std::vector<QxRGBColor> Oi(2);
    std::vector<QxVector3> N(2, {0, 0, 5});
    QxHostPoints points = {{2, 1}, {}, {0, 0, 0}};
    points.variables.Cs = Cs.data();
    points.variables.Ci = Ci.data();
    points.variables.Oi = Oi.data();
    EXPECT_EQ(ErrorOf([&] { m_shader->Run(points, m_scene); }),
              "Shader '" + m_shader->Shader().Name() + "' uses 'N', but the points have none");
    points.variables.N = N.data();

    Numbers gain = {7, 8};
    Numbers each(12);
    Numbers sum(1);
    m_shader->SetBuffer("gain", gain);
    m_shader->SetBuffer("each", each);
    m_shader->SetBuffer("sum", sum);
    for (int run = 0; run < 2; ++run)
        m_shader->Run(points, m_scene);
    EXPECT_EQ(each, (Numbers{3, 3, 3, 3, 3, 3, 7, 14, 21, 8, 16, 24}));
    EXPECT_EQ(m_shader->Get("each").numbers, each);
    EXPECT_EQ(sum, Numbers{2});
    gain[1] = 1;
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{1, 1, 1}));
    EXPECT_EQ(Oi[0], (QxRGBColor{0, 0, 5}));

    {
        const std::unique_ptr<float[]> gone(new float[12]());
        m_shader->SetBuffer("gain", {gone.get(), 12});
        m_shader->SetBuffer("sum", {gone.get(), 1});
        for (int run = 0; run < 2; ++run)
            EXPECT_EQ(ErrorOf([&] { m_shader->Run(points, m_scene); }),
                      "The buffer of parameter 'gain' holds 12 numbers, but the grid needs 2");
        m_shader->SetBuffer("gain", {gone.get(), 2});
        m_shader->Run(points, m_scene);
        m_shader->Set("gain", 4);  // overrides the buffer
        m_shader->ClearBuffer("sum");
    }
    EXPECT_EQ(m_shader->Get("sum").numbers.size(), 1U) << "nothing reads the buffer any more";
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{4, 4, 4}));
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{2});
    m_shader->SetBuffer("gain", gain);
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{1, 1, 1}));
    m_shader->Reset("gain");
    m_shader->Run(points, m_scene);
    EXPECT_EQ(Ci[1], (QxRGBColor{2, 2, 2}));
    EXPECT_EQ(ErrorOf([&] { m_shader->SetBuffer("sum", gain); }),
              "The buffer of parameter 'sum' holds 2 numbers, but 1 are needed");
    EXPECT_NE(ErrorOf([&] { m_shader->SetBuffer("each", {each.data(), 9}); }), "");
    EXPECT_NE(ErrorOf([&] { m_shader->SetBuffer("t", sum); }), "");
}

// The preset `tsan` looks for data races here.
TEST_P(Host, ShadesInSeveralThreadsAtATime)
{
    const std::string path = m_folder.Build("test", R"(
        surface test(varying float a = 2; string t = "x"; output varying float each[2] = {1, 2};
                     float table[3] = {0, 0.5, 1}; point where = point "world" (1, 2, 3)) {
            uniform float i; color seen = 0; float got = 0;
            each[0] = a + noise(u * 7, v) + cellnoise(P); string s = concat(t, format("%f", u));
            while (each[0] > 1.5) each[0] -= 0.25;
            for (i = 0; i < 3; i += 1) each[1] += table[i] + min(random(), 0);
            illuminance (P, N, PI / 2) { lightsource("gain", got); seen += Cl * got; }
            seen += texture("wood") + environment("sky", N) + spline(u, 0, seen, seen, 1);
            if (match("x0.*", s) != 0) seen += Du(P . N) + area(P) + distance(where, P);
            Ci = color(each[0], s == "x" ? 1 : 0, 0) + seen + diffuse(N) + ambient(); Oi = 1; })",
                                            GetParam());
    const auto shader = QxShader::Open(path);
    const auto lamp = Open("lamp", R"(
        light lamp(point from = point "shader" (0, 0, 0); output float gain = 0.5) {
            illuminate (from) Cl = 1 / (L . L); })");
    std::vector<Numbers> results(4);
    std::vector<std::thread> threads;
    for (Numbers& result : results)
        threads.emplace_back([&path, &shader, &lamp, &result] {
            QxHostScene scene;
            QxShaderInstance light(lamp, scene.Spaces());
            scene.AddLight(light);
            // One shader is loaded by several threads at once, the other is shared by all.
            QxShaderInstance own(QxShader::Open(path), scene.Spaces());
            QxShaderInstance shared(shader, scene.Spaces());
            for (int run = 0; run < 20; ++run) {
                QxHostGrid grid(9, 7);
                (run % 2 == 0 ? own : shared).Run(grid, scene);
                const Numbers Ci = grid.Get("Ci").numbers;
                result.insert(result.end(), Ci.begin(), Ci.end());
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(results[0].size(), 20U * 9 * 7 * 3);
    for (const Numbers& result : results)
        EXPECT_EQ(result, results[0]);
}

TEST_P(Host, RunsDisplacementsAndImagers)
{
    Load("displacement test(float by = 1) { P += by * normalize(N); N = calculatenormal(P); }");
    EXPECT_TRUE(m_shader->Shader().ModifiesP());
    Run();
    EXPECT_EQ(m_grid.Values<QxVector3>("P")[0], (QxVector3{-0.5F, 0.5F, 0}));
    EXPECT_EQ(m_grid.Values<QxVector3>("N")[0], (QxVector3{0, 0, -1}));

    m_grid.Set("Ci", QxRGBColor{1, 1, 1});
    QxShaderInstance half(Open("half", "imager half() { Ci *= 0.5; alpha = 0.25; }"),
                          m_scene.Spaces());
    half.Run(m_grid, m_scene);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[0], (QxRGBColor{0.5F, 0.5F, 0.5F}));
    EXPECT_EQ(m_grid.Values<float>("alpha")[0], 0.25F);
}

TEST_P(Host, KeepsTheResultsOfTheLastRunWhenItAnswers)
{
    struct : QxHostScene {
        bool fails = false;
        float Random() override { return fails ? throw QxHostError("no number") : 0.5F; }
    } scene;
    Load(R"(surface test(float scale = 2; float drawn = random(); output varying float sum = 0)
            { sum = scale * drawn + u; })");
    m_shader->Run(m_grid, scene);
    float answer = 0;
    const char handled = 1;
    const QxMessageValue value = {QxValueType::Float, false, 1, &answer, 1, &handled};
    m_shader->Set("scale", 3);
    for (const bool fails : {true, false}) {
        scene.fails = fails;
        EXPECT_EQ(ErrorOf([&] {
                      m_shader->Answer("scale", value, scene, {0, 0, 0});
                  }),
                  fails ? "no number" : "");
        EXPECT_EQ(m_shader->Get("sum").numbers, (Numbers{1, 2, 1, 2})) << fails;
    }
    EXPECT_EQ(answer, 3);
}

TEST_P(Host, AnswersWithoutAGridWhateverOtherParametersHold)
{
    Load(R"(surface test(float scale = 2; varying float each = 0; varying float given = 1;
                         output float sum = 3; output varying float seen = 4)
            { sum += scale; seen = each + given; })");
    Numbers given = {1, 2, 3, 4};
    Numbers sum = {9};
    m_shader->SetForEachPoint("each", Numbers{5, 6, 7, 8});
    m_shader->SetBuffer("given", given);
    m_shader->SetBuffer("sum", sum);
    const auto answer = [&](const char* name) {
        float number = -1;
        const char handled = 1;
        m_shader->Answer(name, {QxValueType::Float, false, 1, &number, 1, &handled}, m_scene,
                         {0, 0, 0});
        return number;
    };
    const auto answers = [&] {
        return Numbers{answer("scale"), answer("each"), answer("given"), answer("sum")};
    };
    EXPECT_EQ(answers(), (Numbers{2, -1, -1, 3}));
    EXPECT_EQ(sum, Numbers{9}) << "only a run writes to the buffer";
    Run();
    EXPECT_EQ(sum, Numbers{5});
    EXPECT_EQ(m_shader->Get("seen").numbers, (Numbers{6, 8, 10, 12}));
    EXPECT_EQ(answers(), (Numbers{2, -1, -1, 5}));
    m_shader->Set("scale", 4);
    EXPECT_EQ(answers(), (Numbers{4, -1, -1, 3}));
    EXPECT_EQ(sum, Numbers{5});
    EXPECT_EQ(m_shader->Get("seen").numbers, (Numbers{6, 8, 10, 12}));

    // These values fit a grid of one point, and its outputs start anew.
    given.resize(1);
    m_shader->SetForEachPoint("each", Numbers{5});
    m_shader->SetBuffer("given", given);
    EXPECT_EQ(answers(), (Numbers{4, 5, 1, 3}));
    EXPECT_EQ(sum, Numbers{5});
    QxHostGrid point(1, 1);
    for (int run = 0; run < 2; ++run) {
        m_shader->Run(point, m_scene);
        EXPECT_EQ(sum, Numbers{7});
        EXPECT_EQ(answers(), (Numbers{4, 5, 1, 7}));
    }
}

TEST_P(Host, ShadesObjectsWithSeparateParameterSets)
{
    Load("surface test(float a = 1) { Ci = a; }");
    const auto shader =
        Open("other", "surface other(float a = 1; varying color c = 2) { Ci = a * c; }");
    QxShaderInstance instance(shader, m_scene.Spaces());
    const QxParameterHandle a = shader->Handle("a");
    EXPECT_NE(ErrorOf([&] { (void)shader->Handle("b"); }), "");
    QxParameterSet sets[] = {QxParameterSet(shader), QxParameterSet(shader)};
    sets[0].Set(a, 3);
    sets[1].SetForEachPoint("c", QxHostValue(QxValueType::Color, Numbers(12, 5)));
    instance.Set(a, 10);
    for (int round = 0; round < 2; ++round) {
        const float expected[] = {6, 5, 20};
        for (int i = 0; i < 3; ++i) {
            instance.Use(i < 2 ? &sets[i] : nullptr);
            instance.Run(m_grid, m_scene);
            EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[1].g, expected[i]) << i;
        }
    }
    sets[0].Reset(a);
    const unsigned long version = sets[0].Version();
    sets[0].Reset(a);
    EXPECT_EQ(sets[0].Version(), version) << "nothing has changed";
    EXPECT_NE(ErrorOf([&] { sets[0].Reset(static_cast<QxParameterHandle>(2)); }), "");
    instance.Use(&sets[0]);
    instance.Run(m_grid, m_scene);
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[1].g, 2);
    EXPECT_NE(ErrorOf([&] { m_shader->Use(&sets[0]); }), "") << "a set of another shader";
}

TEST(QxTypeName, IsTheNameByWhichTheTypeIsFound)
{
    for (const QxValueType type :
         {QxValueType::Float, QxValueType::Point, QxValueType::Color, QxValueType::String,
          QxValueType::Matrix, QxValueType::Vector, QxValueType::Normal})
        EXPECT_EQ(QxTypeNamed(QxTypeName(type)), type) << QxTypeName(type);
    EXPECT_EQ(QxTypeNamed("flag"), std::nullopt);
}
