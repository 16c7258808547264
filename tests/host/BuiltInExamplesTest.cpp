// Checks that byte-code and shared objects compute the values that docs/built-ins.md shows in its
// examples.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <sstream>

#include "helpers/ShaderFolder.h"
#include "host/QxHost.h"
#include "reference/SqxBuiltInExamples.h"

namespace {

using Numbers = std::vector<float>;

/// Returns the numbers of a literal value; empty if `text` is an expression.
Numbers LiteralNumbers(std::string text)
{
    if (text == "no number")
        return {NAN};
    if (text == "infinite")
        return {INFINITY};
    for (char& letter : text)
        if (std::string_view("(),").find(letter) != std::string_view::npos)
            letter = ' ';
    std::istringstream stream(text);
    Numbers numbers;
    for (float number; stream >> number;)
        numbers.push_back(number);
    return stream.eof() ? numbers : Numbers();
}

bool IsText(const SqxBuiltInExample& example)
{
    return example.type == "string";
}

bool IsExpression(const SqxBuiltInExample& example)
{
    return !IsText(example) && LiteralNumbers(std::string(example.value)).empty();
}

std::string Name(char letter, std::size_t number)
{
    return letter + std::to_string(number);
}

/// Returns the source text of a block that executes the statements of `code` and assigns the
/// expression after them to `target`.
std::string Assignment(const std::string& target, std::string_view code)
{
    const std::size_t last = code.rfind("; ");
    const std::size_t start = last == std::string_view::npos ? 0 : last + 2;
    std::string text = "{ ";
    text.append(code.substr(0, start)).append(target).append(" = ").append(code.substr(start));
    return text + "; }\n";
}

/// Returns the source of a surface with an output for each example, and another one for each
/// expected value that is an expression.
std::string Shader()
{
    std::string head = "surface examples(";
    std::string body;
    for (std::size_t i = 0; i < SqxBuiltInExamples().size(); ++i) {
        const SqxBuiltInExample& example = SqxBuiltInExamples()[i];
        const auto output = [&](const std::string& name, std::string_view code) {
            head.append(IsText(example) ? "output uniform " : "output varying ");
            head.append(example.type).append(" ").append(name);
            head.append(IsText(example) ? " = \"\";\n" : " = 0;\n");
            body += Assignment(name, code);
        };
        output(Name('r', i), example.code);
        if (IsExpression(example))
            output(Name('e', i), example.value);
    }
    return head + ")\n{\n" + body + "}\n";
}

bool IsNear(const Numbers& numbers, const Numbers& expected)
{
    bool near = numbers.size() == expected.size();
    for (std::size_t i = 0; near && i < numbers.size(); ++i) {
        const float difference = std::abs(numbers[i] - expected[i]);
        near = numbers[i] == expected[i] || (std::isnan(numbers[i]) && std::isnan(expected[i])) ||
               difference <= 2e-6F * std::max(1.0F, std::abs(expected[i]));
    }
    return near;
}

class Examples {
public:
    explicit Examples(const std::string& path) : m_shader(QxShader::Open(path), m_scene.Spaces())
    {
        QxMatrix44 place = QxMatrix44::Scaling(2);
        place[3][0] = 1;
        place[3][3] = 1;
        m_scene.Spaces().Define("shader", QxFrame3D(place));
        m_scene.AddPointLight({0, 1, 0}, {1, 1, 1});
        m_scene.AddAmbientLight({0.1F, 0.1F, 0.1F});
        m_scene.SetAnswer(QxMessage::Attribute, "tag", 7);
        QxHostGrid grid(5, 5);
        m_shader.Run(grid, m_scene);
    }

    void Check(std::size_t number)
    {
        const SqxBuiltInExample& example = SqxBuiltInExamples()[number];
        const QxHostValue value = m_shader.Get(Name('r', number));
        if (IsText(example)) {
            EXPECT_EQ('"' + value.texts.at(0) + '"', example.value) << example.code;
            return;
        }
        const Numbers numbers = Middle(value);
        const Numbers expected = IsExpression(example) ? Middle(m_shader.Get(Name('e', number)))
                                                       : LiteralNumbers(std::string(example.value));
        EXPECT_TRUE(IsNear(numbers, expected))
            << example.code << " gives " << testing::PrintToString(numbers) << ", not "
            << testing::PrintToString(expected);
    }

private:
    static Numbers Middle(const QxHostValue& value)
    {
        const std::size_t width = QxFloatCount(value.type);
        const auto first = value.numbers.begin() + static_cast<std::ptrdiff_t>(12 * width);
        return {first, first + static_cast<std::ptrdiff_t>(width)};
    }

    QxHostScene m_scene;
    QxShaderInstance m_shader;
};

}  // namespace

TEST(BuiltInExamples, HoldInBothOutputs)
{
    const ShaderFolder folder;
    for (const char* options :
         {"-w0 -O0 --int", "-w0 -O2 --int", "-w0 -O0 --dso", "-w0 -O3 --dso"}) {
        SCOPED_TRACE(options);
        Examples examples(folder.Build("examples", Shader(), options));
        for (std::size_t i = 0; i < SqxBuiltInExamples().size(); ++i)
            examples.Check(i);
    }
}
