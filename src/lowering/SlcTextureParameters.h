#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>

#include "icode/SlcLexType.h"

/// The named parameters of a texture access, each with its default, as the call overrides them.
///
/// The access primitive takes every parameter in a fixed place, so that a call names all of them.
class SlcTextureParameters {
public:
    /// `args` holds names and values from `first` on. A name that no access knows has one value,
    /// which is passed over.
    SlcTextureParameters(const std::deque<SlcOperand>& args, std::size_t first);

    /// `key` without quotes, one of the parameters of accesses.
    [[nodiscard]] const SlcOperand& Get(std::string_view key) const;
    /// The points that the light of an area shadow spans, at most four; empty for any other access.
    [[nodiscard]] const std::deque<SlcOperand>& GetSourcePoints() const { return m_sourcePoints; }
    [[nodiscard]] bool HasSource() const { return m_hasSource; }

private:
    void Set(std::string_view key, const SlcOperand& value);

    std::map<std::string, SlcOperand, std::less<>> m_values;
    std::deque<SlcOperand> m_sourcePoints;
    bool m_hasSource = false;
};
