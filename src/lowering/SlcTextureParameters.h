#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>

#include "icode/SlcLexType.h"

/// The named parameters of a texture access: the defaults, overridden by the arguments of the call.
///
/// The access primitive has a fixed position for every parameter that it takes, so each call passes
/// a value for each of them.
class SlcTextureParameters {
public:
    /// `args` holds names and values from `first` on. A name that is unknown or not a constant is
    /// skipped together with its value.
    SlcTextureParameters(const std::deque<SlcOperand>& args, std::size_t first);

    /// Returns the value of the parameter `key`, a known name without quotes.
    [[nodiscard]] const SlcOperand& Get(std::string_view key) const;
    /// Returns the corner points of the light of an area shadow, at most four; empty for other
    /// accesses.
    [[nodiscard]] const std::deque<SlcOperand>& GetSourcePoints() const { return m_sourcePoints; }
    [[nodiscard]] bool HasSource() const { return m_hasSource; }

private:
    void Set(std::string_view key, const SlcOperand& value);

    std::map<std::string, SlcOperand, std::less<>> m_values;
    std::deque<SlcOperand> m_sourcePoints;
    bool m_hasSource = false;
};
