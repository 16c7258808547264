#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "helpers/ShaderFolder.h"
#include "host/QxHost.h"

using Numbers = std::vector<float>;

/// A surface with parameters of most types, also arrays, and outputs, most of which are computed
/// from them.
inline constexpr const char* k_values = R"(
surface test(float scale = 2; color tint = color(0.5, 0.25, 1); string name = "plain";
             float weights[2] = {1, 2}; point place = point(0, 0, 1); varying float each = 3;
             matrix frame = 2;
             output float sum = 10; output varying color seen = 0; output string said = "";
             output varying float pair[2] = {0, 0})
{
    sum += scale + weights[0] + weights[1];
    seen = tint * each;
    said = concat(name, "!");
    pair[0] = u;
    pair[1] = v;
    Ci = tint * scale * Cs;
    Oi = comp(frame, 0, 0) + zcomp(place);
}
)";

/// Holds a folder, a scene, a grid of 2 by 2 points, and one shader. The test's parameter is the
/// compiler option that selects the kind of compiled file.
class Host : public ::testing::TestWithParam<const char*> {
protected:
    void Load(const std::string& source)
    {
        m_shader = std::make_unique<QxShaderInstance>(Open("test", source), m_scene.Spaces());
    }
    std::shared_ptr<const QxShader> Open(const std::string& name, const std::string& source)
    {
        return QxShader::Open(m_folder.Build(name, source, GetParam()));
    }
    void Run() { m_shader->Run(m_grid, m_scene); }
    /// Returns the text of the `QxHostError` that `action` throws; empty if it throws nothing.
    template <class Action>
    static std::string ErrorOf(const Action& action)
    {
        try {
            action();
        } catch (const QxHostError& error) {
            return error.what();
        }
        return "";
    }

    ShaderFolder m_folder;
    QxHostScene m_scene;
    QxHostGrid m_grid{2, 2};
    std::unique_ptr<QxShaderInstance> m_shader;
};
