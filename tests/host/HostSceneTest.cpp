// Tests what shaders ask of a scene: spaces, lights, messages and queries.

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "host/HostFixture.h"

TEST_P(Host, FindsSpacesByName)
{
    Load(R"(surface test(output varying point moved = 0; output varying point back = 0)
            { moved = transform("shader", P); back = transform("unknown", P); })");
    QxMatrix44 shift = QxMatrix44::Identity();
    shift[3][0] = 5;
    m_scene.Spaces().Define("shader", QxFrame3D(shift));
    Run();
    EXPECT_EQ(m_shader->Get("moved").numbers[0], -5.5F);
    EXPECT_EQ(m_shader->Get("back").numbers[0], -0.5F);
}

TEST_P(Host, RunsLightsOfEveryKind)
{
    Load(R"(surface test() {
                Ci = 0;
                illuminance (P, N, PI / 2) { Ci += Cl * normalize(L) . N; }
                Oi = ambient(); })");
    m_scene.AddAmbientLight({0.5F, 0, 0});
    m_scene.AddDistantLight({0, 0, 2}, {0, 1, 0});
    m_scene.AddDistantLight({0, 0, -2}, {100, 100, 100});  // from behind the surface
    m_scene.AddPointLight({-0.5F, 0.5F, -3}, {0, 0, 2});   // in front of the first point

    const auto spot = Open("spot", R"(
        light spot(float power = 1; point from = point "shader" (0, 0, 0))
        { illuminate (from) { Cl = power * color(1, 0, 0); } })");
    QxShaderInstance weak(spot, m_scene.Spaces());
    QxShaderInstance strong(spot, m_scene.Spaces());
    strong.Set("power", 10);
    strong.Set("from", QxVector3{-0.5F, 0.5F, 0});
    m_scene.AddLight(weak);
    m_scene.AddLight(strong);
    QxMatrix44 place = QxMatrix44::Identity();
    place[3][0] = -0.5F;
    place[3][1] = 0.5F;
    m_scene.Spaces().Define("shader", QxFrame3D(place));

    QxShaderInstance ambient(Open("sky", "light sky() { Cl = color(0, 0, zcomp(Ps)); }"),
                             m_scene.Spaces());
    m_scene.AddLight(ambient);
    EXPECT_EQ(m_scene.LightCount(), 5U);
    EXPECT_NE(ErrorOf([&] { m_scene.AddLight(*m_shader); }).find("is no light shader"),
              std::string::npos);

    Run();
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Oi")[3], (QxRGBColor{0.5F, 0, 1}));
    const QxRGBColor lit = m_grid.Values<QxRGBColor>("Ci")[0];
    EXPECT_NEAR(lit.r, 11, 1e-4);
    EXPECT_NEAR(lit.g, 1, 1e-4);
    EXPECT_NEAR(lit.b, 2, 1e-4);
}

TEST_P(Host, RecognizesAmbientLightsByTheirCode)
{
    const struct {
        const char* body;
        bool ambient;
        bool steady;  // its light is the same at all points
    } cases[] = {
        {"Cl = power;", true, true},
        {"Cl = power * xcomp(Ps);", true, false},
        {"Cl = power * length(P) + zcomp(I) + u;", true, true},  // P is that of the light
        {"if (power > 2) illuminate (point \"shader\" (0, 0, 0)) Cl = each;", false, true},
        {"solar (vector (0, 0, 1), 0) Cl = each;", false, true},
    };
    Load("surface test() { Ci = ambient(); Oi = 1; }");
    for (const auto& c : cases) {
        QxHostScene scene;
        QxShaderInstance light(
            Open("lamp", "light lamp(float power = 1; varying float each = 1) { " +
                             std::string(c.body) + " }"),
            scene.Spaces());
        if (!c.ambient)
            light.SetForEachPoint("each", Numbers{1, 2, 3, 4});
        scene.AddLight(light);
        EXPECT_EQ(scene.LightCount(), c.ambient ? 0U : 1U) << c.body;
        m_shader->Run(m_grid, scene);
        const auto Ci = m_grid.Values<QxRGBColor>("Ci");
        EXPECT_EQ(Ci[0] == Ci[1], c.steady) << c.body;
    }
}

TEST_P(Host, KeepsTheSpacesOfInstancesSeparate)
{
    const auto spot = Open("spot", R"(
        light spot(point from = point "shader" (0, 0, 0); vector axis = vector "shader" (0, 0, 1))
        { illuminate (from, axis, 0.2) { Cl = color(1, comp(axis, 0), distance(from, transform("world", from))); } })");
    Load(R"(surface test() { Ci = 0; illuminance (P) { Ci += Cl; } Oi = 1; })");
    const float places[] = {-0.5F, 0.5F, 7};  // the last one lights nothing
    std::vector<std::unique_ptr<QxShaderInstance>> lights;
    QxMatrix44 world = QxMatrix44::Identity();
    world[3][2] = 2;
    m_scene.Spaces().Define("world", QxFrame3D(world));
    for (const float x : places) {
        lights.push_back(std::make_unique<QxShaderInstance>(spot, m_scene.Spaces()));
        QxMatrix44 place = QxMatrix44::Identity();
        place[3][0] = x;
        place[3][1] = 0.5F;
        lights.back()->Spaces().Define("shader", QxFrame3D(place));
        m_scene.AddLight(*lights.back());
    }
    Run();
    const auto Ci = m_grid.Values<QxRGBColor>("Ci");
    EXPECT_EQ(Ci[0], (QxRGBColor{1, 0, 2}));
    EXPECT_EQ(Ci[1], (QxRGBColor{1, 0, 2}));
    EXPECT_EQ(Ci[2], (QxRGBColor{0, 0, 0}));
    EXPECT_EQ(lights[1]->Get("from").numbers, (Numbers{0.5F, 0.5F, 0}));

    // When a space is moved, default values in it change too.
    QxMatrix44 turned = QxMatrix44::Identity();
    turned[2][2] = -1;
    turned[3][1] = 0.5F;
    turned[3][2] = 3;
    lights[1]->Spaces().Define("shader", QxFrame3D(turned));
    world[3][2] = 0;
    m_scene.Spaces().Define("world", QxFrame3D(world));
    Run();
    EXPECT_EQ(Ci[0], (QxRGBColor{1, 0, 0}));
    EXPECT_EQ(Ci[1], (QxRGBColor{0, 0, 0}));
    EXPECT_EQ(lights[1]->Get("from").numbers, (Numbers{0, 0.5F, 3}));
}

TEST_P(Host, SwitchesLimitsAndRemovesLights)
{
    Load("surface test() { Ci = ambient(); illuminance (P) { Ci += Cl; } Oi = 1; }");
    const auto lit = [this] {
        Run();
        return m_grid.Values<QxRGBColor>("Ci")[3].r;
    };
    const QxLightHandle first = m_scene.AddPointLight({0, 0, 0}, {1, 1, 1});
    const QxLightHandle second = m_scene.AddDistantLight({0, 0, 1}, {10, 10, 10});
    const QxLightHandle third = m_scene.AddAmbientLight({100, 100, 100});
    EXPECT_EQ(lit(), 111);
    m_scene.SwitchLight(first, false);
    EXPECT_EQ(lit(), 110);
    EXPECT_EQ(m_scene.LightCount(), 1U);
    m_scene.SwitchLight(first, true);
    m_scene.LimitLight(second, {"stage", "actors"});
    m_scene.LimitLight(third, {"stage"});
    EXPECT_EQ(lit(), 1);
    QxHostObject actor;
    actor.categories = {"crowd", "actors"};
    m_scene.SetObject(&actor);
    EXPECT_EQ(lit(), 11);
    m_scene.RemoveLight(first);
    EXPECT_EQ(lit(), 10);
    EXPECT_NE(ErrorOf([&] { m_scene.SwitchLight(first, true); }), "");
    const QxHostScene::GridScope scope(m_scene, m_grid);
    EXPECT_NE(ErrorOf([&] { m_scene.RemoveLight(second); }), "");
}

TEST_P(Host, KnowsWhichLightRunsAlsoAfterALightThrows)
{
    struct : QxHostScene {
        bool asks = false;
        bool fails = false;
        QxRGBColor Transmission(const QxRayQuery&) override
        {
            const auto running = RunningLight();
            EXPECT_TRUE(running);
            if (std::exchange(asks, false)) {  // runs both lights while one is running
                QxVector3 L[2] = {};
                QxRGBColor colors[4] = {};
                QxLightInput lights[] = {{&L[0], &colors[0], &colors[1]},
                                         {&L[1], &colors[2], &colors[3]}};
                EvaluateLights(L, 1, lights, 2);
            }
            EXPECT_EQ(RunningLight(), running);
            if (fails)
                throw QxHostError("no light");
            return {1, 1, 1};
        }
    } scene;
    const auto lamp = Open("lamp", R"(
        light lamp() { illuminate (point "shader" (0, 0, 0)) Cl = transmission(Ps, E); })");
    const auto sky = Open("sky", "light sky() { Cl = transmission(Ps, E); }");
    QxShaderInstance lamps[] = {{lamp, scene.Spaces()}, {lamp, scene.Spaces()}};
    QxShaderInstance ambient(sky, scene.Spaces());
    for (QxShaderInstance* light : {&lamps[0], &lamps[1], &ambient})
        scene.AddLight(*light);
    Load("surface test() { Ci = 0; illuminance (P) { Ci += Cl; } Oi = ambient(); }");
    const QxHostScene::GridScope around(scene, m_grid);
    const auto lit = [&] {
        scene.asks = true;
        m_shader->Run(m_grid, scene);
        return m_grid.Values<QxRGBColor>("Ci")[3].r + m_grid.Values<QxRGBColor>("Oi")[3].r;
    };
    EXPECT_EQ(lit(), 3);
    EXPECT_FALSE(scene.RunningLight());
    scene.fails = true;
    std::vector<QxVector3> places(4);
    std::vector<QxRGBColor> colors(4);
    QxLightInput input = {places.data(), colors.data(), colors.data()};
    EXPECT_EQ(ErrorOf([&] { scene.EvaluateLights(places.data(), 4, &input, 1); }), "no light");
    EXPECT_FALSE(scene.RunningLight());
    EXPECT_EQ(ErrorOf([&] { (void)scene.Ambient({0, 0, 0}); }), "no light");
    EXPECT_FALSE(scene.RunningLight());
    scene.fails = false;
    EXPECT_EQ(lit(), 3);
}

TEST_P(Host, AnswersMessages)
{
    Load(R"(surface test(output float found = 0; output color tint = 0; output string tag = "") {
                found = attribute("user:tint", tint) + 10 * attribute("user:tag", tag)
                        + 100 * attribute("user:other", tag) + 1000 * attribute("user:tag", tint);
            })");
    m_scene.SetAnswer(QxMessage::Attribute, "user:tint", QxRGBColor{1, 2, 3});
    m_scene.SetAnswer(QxMessage::Attribute, "user:tag", "label");
    m_scene.SetAnswer(QxMessage::Option, "user:other", "elsewhere");
    Run();
    EXPECT_EQ(m_shader->Get("found").numbers, Numbers{11});
    EXPECT_EQ(m_shader->Get("tint").numbers, (Numbers{1, 2, 3}));
    EXPECT_EQ(m_shader->Get("tag").texts, std::vector<std::string>{"label"});
}

TEST_P(Host, PassesMessagesToOtherShaders)
{
    Load(R"(surface test(float Kd = 0.25; output float sum = 0; output varying float each = 0;
                         output string tag = ""; output float others = 0) {
                uniform float i = 0; varying float w = 0;
                illuminance (P, N, PI) {
                    i = 0; w = 0; lightsource("power", i); sum += i;
                    lightsource("each", w); each += w;
                    if (lightsource("made", i) != 0) sum += 100 * i;
                    if (lightsource("name", i) == 0) sum += 1000;
                }
                textureinfo("b.tex", "kind", tag);
                i = 0; displacement("Km", i); others = i; i = 0;
                if (atmosphere("density", i) == 0) others += 10;
                if (opposite("density", i) != 0) others += 100 * i;
                Ci = trace(P, N); Oi = 1; })");
    const auto lamp = Open("lamp", R"(
        light lamp(float power = 1; varying float each = 0; output float made = 0; string name = "") {
            uniform float k = 0; surface("Kd", k); made = k * power;
            illuminate (point "shader" (0, 0, 0)) Cl = 1; })");
    QxShaderInstance lamps[] = {{lamp, m_scene.Spaces()}, {lamp, m_scene.Spaces()}};
    for (int i : {0, 1}) {
        lamps[i].Set("power", 3 + i);
        m_scene.AddLight(lamps[i]);
    }
    m_scene.AddPointLight({0, 0, 0}, {1, 1, 1});
    m_scene.SetTextureAnswer("a.tex", "kind", "other");
    m_scene.SetTextureAnswer("b.tex", "kind", "shadow");
    QxShaderInstance bumps(Open("bumps", "displacement bumps(float Km = 7) { P += Km * N; }"),
                           m_scene.Spaces());
    QxShaderInstance fog(Open("fog", "volume fog(float density = 2) { Ci = density; }"),
                         m_scene.Spaces());
    QxHostObject object;
    object.displacement = &bumps;
    object.opposite = &fog;
    m_scene.SetObject(&object);
    lamps[1].SetForEachPoint("each", Numbers{1, 2, 3, 4});
    Run();
    EXPECT_EQ(m_shader->Get("sum").numbers, Numbers{3 + 4 + 3000 + 100 * 0.25F * (3 + 4)});
    EXPECT_EQ(m_shader->Get("each").numbers, (Numbers{1, 2, 3, 4}));
    EXPECT_EQ(m_shader->Get("tag").texts[0], "shadow");
    EXPECT_EQ(m_shader->Get("others").numbers, Numbers{7 + 10 + 200});
    bumps.Set("Km", 8);
    m_scene.SetObject(nullptr);
    m_scene.ClearTextureAnswer("b.tex", "kind");
    Run();
    EXPECT_EQ(m_shader->Get("others").numbers, Numbers{10});
    EXPECT_EQ(m_shader->Get("tag").texts[0], "");
}

TEST_P(Host, AsksALightOnlyInGridsForWhichItHasRun)
{
    Load(R"(surface test(output float early = 0; output float late = 0) {
                lightsource("power", early);
                illuminance (P, N, PI) { lightsource("power", late); }
                Ci = 1; Oi = 1; })");
    QxShaderInstance lamp(Open("lamp", R"(
        light lamp(output float power = 1) {
            power = 3; illuminate (point "shader" (0, 0, 0)) Cl = 1; })"),
                          m_scene.Spaces());
    m_scene.AddLight(lamp);
    m_scene.SetAnswer(QxMessage::LightSource, "power", 7);
    for (int run = 0; run < 2; ++run) {
        Run();
        EXPECT_EQ(m_shader->Get("early").numbers, Numbers{7}) << run;
        EXPECT_EQ(m_shader->Get("late").numbers, Numbers{3}) << run;
    }
}

// In a shared object, a local of a default value that depends on the shading point is null at
// first.
TEST_P(Host, TreatsStringsThatWereNeverSetAsEmpty)
{
    Load(R"(
        float asked(float x) {
            uniform string name, filter; varying string each; float found = 0;
            color sum = spline(name, x, 0, 1, 2, 3, 4) + texture(name, s, t)
                      + texture(each, s, t, "filter", filter)
                      + environment(each, N, "filter", filter) + shadow(name, P)
                      + indirectdiffuse(P, N, 7, "environmentmap", name)
                      + ctransform(name, Cs) + filterstep(x, v, "filter", filter);
            found = attribute(name, found) + textureinfo(name, name, found) + match(name, name);
            if (each == "" && format("%s|", each) == "|")
                sum += spline(each, x, 0, 1, 2, 3, 4);
            return found + comp(sum, 0);
        }
        surface test(varying float got = asked(u)) { Ci = got; Oi = 1; })");
    struct : QxHostScene {
        QxRGBColor Texture(const QxTextureQuery& q) override { return Keep({q.name, q.filter}); }
        QxRGBColor Environment(const QxPointsQuery& q) override { return Keep({q.name, q.filter}); }
        QxRGBColor Shadow(const QxPointsQuery& q) override { return Keep({q.name, q.filter}); }
        QxRGBColor IndirectDiffuse(const QxRayQuery& q, QxVector3&, float&) override
        {
            return Keep({q.environment});
        }
        bool Message(QxMessage, const char* texture, const char* name,
                     const QxMessageValue&) override
        {
            Keep({texture, name});
            return false;
        }
        QxRGBColor Keep(std::initializer_list<const char*> more)
        {
            for (const char* text : more)
                EXPECT_NE(text, nullptr);
            return {1, 1, 1};
        }
    } scene;
    m_shader->Run(m_grid, scene);
    // Five answers, two splines, Cs, half a step, and a match.
    const float sum = 5 + 2 * 3 + 1 + 0.5F + 1;
    EXPECT_EQ(m_grid.Values<QxRGBColor>("Ci")[3], (QxRGBColor{sum, sum, sum}));
}

namespace {

/// Answers queries point by point, or those of a grid at once, with the same values.
template <bool grids>
class Asked : public QxHostScene {
public:
    int calls = 0;
    std::vector<unsigned int> texturePoints;
    std::vector<std::string> files;

    static QxRGBColor Of(const QxTextureQuery& q) { return {q.s[0], q.t[2], q.samples}; }
    static QxRGBColor Of(const QxPointsQuery& q)
    {
        return {q.points[0].x, q.points[2].y, q.fidelity};
    }
    static QxRGBColor Of(const QxRayQuery& q) { return {q.position.x, q.direction.y, q.samples}; }

    QxRGBColor Texture(const QxTextureQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Environment(const QxPointsQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Shadow(const QxPointsQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Transmission(const QxRayQuery& q) override { return grids ? QxRGBColor{} : Of(q); }
    QxRGBColor Trace(const QxRayQuery& q, float& distance) override
    {
        distance = q.position.y;
        return grids ? QxRGBColor{} : Of(q);
    }
    float RayHit(const QxRayQuery& q) override { return grids ? 0 : q.position.y; }
    float Occlusion(const QxRayQuery& q, QxVector3& open) override
    {
        open = q.position;
        return grids ? 0 : q.samples;
    }
    QxRGBColor IndirectDiffuse(const QxRayQuery& q, QxVector3& open, float& occlusion) override
    {
        open = q.position;
        occlusion = q.bias;
        return grids ? QxRGBColor{} : Of(q);
    }
    const void* FindFile(QxFileKind, const char* name) override
    {
        files.emplace_back(name);
        return this;
    }
    void TextureOverGrid(const QxGridQueries<QxTextureQuery>& asked, QxRGBColor* results) override
    {
        texturePoints.insert(texturePoints.end(), asked.points, asked.points + asked.count);
        EXPECT_EQ(asked.file, this);
        if (!Answer(asked, results))
            QxHostScene::TextureOverGrid(asked, results);
    }
    void EnvironmentOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* r) override
    {
        if (!Answer(asked, r))
            QxHostScene::EnvironmentOverGrid(asked, r);
    }
    void ShadowOverGrid(const QxGridQueries<QxPointsQuery>& asked, QxRGBColor* r) override
    {
        if (!Answer(asked, r))
            QxHostScene::ShadowOverGrid(asked, r);
    }
    void TransmissionOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* r) override
    {
        if (!Answer(asked, r))
            QxHostScene::TransmissionOverGrid(asked, r);
    }
    void TraceOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* r, float* d) override
    {
        if (!Answer(asked, r))
            return QxHostScene::TraceOverGrid(asked, r, d);
        for (unsigned int i = 0; i < asked.count; ++i)
            d[i] = asked.queries[i].position.y;
    }
    void OcclusionOverGrid(const QxGridQueries<QxRayQuery>& asked, float* r, QxVector3* o) override
    {
        ++calls;
        if (!grids)
            return QxHostScene::OcclusionOverGrid(asked, r, o);
        for (unsigned int i = 0; i < asked.count; ++i) {
            r[i] = asked.queries[i].samples;
            o[i] = asked.queries[i].position;
        }
    }
    void RayHitOverGrid(const QxGridQueries<QxRayQuery>& asked, float* d) override
    {
        ++calls;
        if (!grids)
            return QxHostScene::RayHitOverGrid(asked, d);
        for (unsigned int i = 0; i < asked.count; ++i)
            d[i] = asked.queries[i].position.y;
    }
    void IndirectDiffuseOverGrid(const QxGridQueries<QxRayQuery>& asked, QxRGBColor* r,
                                 QxVector3* o, float* occlusions) override
    {
        if (!Answer(asked, r))
            return QxHostScene::IndirectDiffuseOverGrid(asked, r, o, occlusions);
        for (unsigned int i = 0; i < asked.count; ++i) {
            o[i] = asked.queries[i].position;
            occlusions[i] = asked.queries[i].bias;
        }
    }

private:
    template <class Query>
    bool Answer(const QxGridQueries<Query>& asked, QxRGBColor* results)
    {
        ++calls;
        for (unsigned int i = 0; grids && i < asked.count; ++i)
            results[i] = Of(asked.queries[i]);
        return grids;
    }
};

}  // namespace

TEST_P(Host, QueriesTheSceneOnceForAllPointsOfAGrid)
{
    Load(R"(surface test(output varying color got = 0; output varying float far = 0;
                         output varying vector open = 0; output varying float covered = 0) {
                if (u > 0.5) {
                    got = texture("a", s, t, "samples", 3);
                    float hit = trace(P, N);
                    got += hit + indirectdiffuse(P, N, 7, "bias", 0.5, "environmentdir", open, "occlusion", covered);
                }
                got += environment("b", N + P, "fidelity", 0.5) + transmission(P, N) + trace(P, N, far);
                Ci = got; Oi = shadow("c", P) + occlusion(P, N, 4); })");
    for (const unsigned int side : {2U, 1U}) {
        QxHostGrid grid(side, side);
        grid.Set("u", 1);
        if (side == 2)
            grid.Set("u", Numbers{0, 1, 0, 1});
        const auto made = [&](QxHostScene& scene) {
            std::vector<Numbers> values;
            m_shader->Run(grid, scene);
            for (const char* name : {"Ci", "Oi"})
                values.push_back(grid.Get(name).numbers);
            for (const char* name : {"far", "open", "covered"})
                values.push_back(m_shader->Get(name).numbers);
            return values;
        };
        Asked<true> all;
        Asked<false> each;
        const auto values = made(all);
        EXPECT_EQ(made(each), values);
        EXPECT_NE(values[0], Numbers(values[0].size(), values[0][0]));
        EXPECT_EQ(all.calls, 8);
        EXPECT_EQ(all.files, (std::vector<std::string>{"a", "b", "c"}));
        EXPECT_EQ(all.texturePoints,
                  side == 2 ? (std::vector<unsigned int>{1, 3}) : std::vector<unsigned int>{0});
    }
}

TEST_P(Host, LooksFilesUpOnce)
{
    // Without optimization a shared object queries point by point.
    m_shader = std::make_unique<QxShaderInstance>(
        QxShader::Open(m_folder.Build("test",
                                      R"(surface test(string name = "a") {
                                             Ci = texture(name, s, t) + texture("b", s, t); })",
                                      std::string(GetParam()) + " -O0")),
        m_scene.Spaces());
    Asked<true> first;
    Asked<true> second;
    const auto filesAfterRun = [this](Asked<true>& scene) {
        m_shader->Run(m_grid, scene);
        return scene.files.size();
    };
    EXPECT_EQ(filesAfterRun(first), 2U);
    EXPECT_EQ(filesAfterRun(first), 2U);
    EXPECT_EQ(filesAfterRun(second), 2U);
    EXPECT_EQ(filesAfterRun(first), 4U);
    first.ForgetFiles();
    EXPECT_EQ(filesAfterRun(first), 6U);
    m_shader->Set("name", "c");
    EXPECT_EQ(filesAfterRun(first), 7U);
    m_shader->Run(m_grid, static_cast<QxShaderSupport&>(first), 0);
    EXPECT_EQ(filesAfterRun(first), 7U) << "a scene is known by its base, too";
}
