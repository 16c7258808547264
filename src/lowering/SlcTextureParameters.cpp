// Reads the names and values after the positional arguments; they override the defaults. `blur` and
// `width` set both directions; if a name is given twice, the last value counts; "source" takes up
// to four points instead of one value. Semantic analysis has reported unknown names.
//
// Tested by tests/golden/texture_forms.sl.

#include "lowering/SlcTextureParameters.h"

namespace {

constexpr std::size_t k_mostSourcePoints = 4;

struct NumberRow {
    const char* key;
    double initial;
};

// clang-format off
//   key          default
constexpr NumberRow k_numbers[] = {
    {"sblur",     0},
    {"tblur",     0},
    {"lerp",      0},
    {"swidth",    1},
    {"twidth",    1},
    {"fill",      0},
    {"samples",   1},
    {"fidelity",  1},
    {"bias",      0},
    {"gapbias",   0},
};
// clang-format on

std::string_view WithoutQuotes(const SlcOperand& operand)
{
    const std::string_view text = operand->GetString();
    return text.substr(1, text.size() - 2);
}

}  // namespace

SlcTextureParameters::SlcTextureParameters(const std::deque<SlcOperand>& args, std::size_t first)
{
    for (const NumberRow& row : k_numbers)
        m_values.emplace(row.key, SlcLexType::Float(row.initial));
    m_values.emplace("filter", SlcLexType::String("\"gaussian\""));

    for (std::size_t i = first; i + 1 < args.size();) {
        const std::string_view key = args[i]->IsString() ? WithoutQuotes(args[i]) : "";
        ++i;
        if (key != "source" || !args[i]->GetType()->IsPointType()) {
            Set(key, args[i++]);
            continue;
        }
        m_hasSource = true;
        m_sourcePoints.clear();
        for (; i < args.size() && args[i]->GetType()->IsPointType() &&
               m_sourcePoints.size() < k_mostSourcePoints;
             ++i)
            m_sourcePoints.push_back(args[i]);
    }
}

void SlcTextureParameters::Set(std::string_view key, const SlcOperand& value)
{
    if (key == "blur" || key == "width") {
        const std::string name(key);
        Set('s' + name, value);
        Set('t' + name, value);
        return;
    }
    const auto found = m_values.find(key);
    if (found != m_values.end())
        found->second = value;
}

const SlcOperand& SlcTextureParameters::Get(std::string_view key) const
{
    return m_values.find(key)->second;
}
