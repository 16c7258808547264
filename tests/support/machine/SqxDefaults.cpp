#include "machine/SqxDefaults.h"

#include <string_view>

#include "QxGeometry.h"

namespace {

constexpr QxVector3 k_eye = {0.5F, 0.25F, -2};

float Step(unsigned int points)
{
    return points > 1 ? 1 / static_cast<float>(points - 1) : 1;
}

/// A point of the patch.
struct Place {
    float u;
    float v;

    [[nodiscard]] QxVector3 P() const { return {u, v, 0.25F * u * v}; }
    [[nodiscard]] QxVector3 Du() const { return {1, 0, 0.25F * v}; }
    [[nodiscard]] QxVector3 Dv() const { return {0, 1, 0.25F * u}; }
    [[nodiscard]] QxVector3 Normal() const { return QxCross(Du(), Dv()) * -1.0F; }
};

using Values = std::vector<float>;

Values Three(const QxVector3& v)
{
    return {v.x, v.y, v.z};
}

struct Row {
    std::string_view name;
    Values (*at)(const Place&);
};

// clang-format off
const Row k_varying[] = {
    {"u",     [](const Place& p) { return Values{p.u}; }},
    {"v",     [](const Place& p) { return Values{p.v}; }},
    {"s",     [](const Place& p) { return Values{p.u}; }},
    {"t",     [](const Place& p) { return Values{1 - p.v}; }},
    {"alpha", [](const Place& p) { return Values{0.5F + 0.5F * p.u}; }},
    {"P",     [](const Place& p) { return Three(p.P()); }},
    {"Ps",    [](const Place& p) { return Three(p.P()); }},
    {"I",     [](const Place& p) { return Three(p.P() - k_eye); }},
    {"N",     [](const Place& p) { return Three(p.Normal()); }},
    {"Ng",    [](const Place& p) { return Three(p.Normal()); }},
    {"dPdu",  [](const Place& p) { return Three(p.Du()); }},
    {"dPdv",  [](const Place& p) { return Three(p.Dv()); }},
    {"L",     [](const Place& p) { return Three({1, p.u, p.v}); }},
    {"Cs",    [](const Place& p) { return Three({p.u, p.v, 0.5F}); }},
    {"Os",    [](const Place& p) { return Three({0.5F, 0.75F, 1 - 0.5F * p.u}); }},
    {"Ci",    [](const Place& p) { return Three({0.25F, p.u, p.v}); }},
    {"Oi",    [](const Place& p) { return Three({1, 1, 1 - 0.25F * p.v}); }},
    {"Cl",    [](const Place& p) { return Three({1, 0.5F, p.u}); }},
    {"Ol",    [](const Place&)   { return Three({1, 1, 1}); }},
};
// clang-format on

}  // namespace

std::vector<float> SqxDefaultValues(const std::string& name, const QxGrid& grid)
{
    if (name == "E")
        return Three(k_eye);
    if (name == "ncomps")
        return {3};
    if (name == "time")
        return {0.25F};
    if (name == "du")
        return {Step(grid.columns)};
    if (name == "dv")
        return {Step(grid.rows)};
    Values numbers;
    for (const Row& row : k_varying) {
        if (row.name != name)
            continue;
        for (unsigned int i = 0; i < grid.Size(); ++i) {
            const auto column = static_cast<float>(i % grid.columns);
            const unsigned int line = i / grid.columns;
            const Values at =
                row.at({column * Step(grid.columns), static_cast<float>(line) * Step(grid.rows)});
            numbers.insert(numbers.end(), at.begin(), at.end());
        }
    }
    return numbers;
}
