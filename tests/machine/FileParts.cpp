#include "machine/FileParts.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "sqx/SqxFileHead.h"
#include "sqx/SqxNumbers.h"

namespace {

const std::vector<std::string> k_names = {"s",  "P",  "Ci", "Kd", "w",  "uf", "ub", "up",
                                          "um", "us", "ua", "ue", "vf", "vb", "vc", "vs",
                                          "va", "ve", "#1", "#a", "#0", "#t"};

int NumberOf(const std::string& word)
{
    const auto name = std::find(k_names.begin(), k_names.end(), word);
    if (name != k_names.end())
        return static_cast<int>(name - k_names.begin());
    const int number = SqxNumberNamed(word);
    return number > 0 ? number : std::stoi(word);
}

}  // namespace

std::string CodeText(const std::string& code)
{
    std::istringstream words(code);
    std::string text;
    int count = 0;
    for (std::string word; words >> word; ++count)
        text += std::to_string(NumberOf(word)) + '\n';
    return std::to_string(count) + '\n' + text;
}

std::string FileParts::Text() const
{
    std::string text;
    for (const std::string_view line : k_sqxFileHead)
        text += std::string(line) + '\n';
    text += "0\n\n" + total + '\n' + predefined + parameters + uniforms + varyings + constants;
    text += "\n0\n\n" + initializers + "\n0\n0\n\n0\n0\n\n" + shadeops + "\n0\n0\n";
    return text + CodeText(code);
}
