// A key has a letter for each thing that an evaluation depends on: the place of the call, the
// detail that its context requests, and the detail of each argument. " S -uv" is a call in the
// shader's own code, which wants nothing, with a uniform and a varying argument.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "semantics/SlcInlineResults.h"

#include <utility>

SlcInlineResults::Circumstances::Circumstances(const SlcCallPlace& place, bool isQuiet)
{
    // One compile has one kind of shader, and the depth of a call changes no detail.
    m_key += place.inLightStatement ? 'L' : ' ';
    m_key += place.inShader ? 'S' : ' ';
    m_key += isQuiet ? 'Q' : ' ';
    Add(place.wanted);
}

void SlcInlineResults::Circumstances::Add(const SlcDetailNode* detail)
{
    if (!detail)
        m_key += '-';
    else if (detail->IsVarying())
        m_key += 'v';
    else
        m_key += detail->IsUniform() ? 'u' : '?';
}

const SlcInlineResults::Result* SlcInlineResults::Find(const Circumstances& circumstances) const
{
    const auto found = m_results.find(circumstances.Key());
    return found == m_results.end() ? nullptr : &found->second;
}

const SlcInlineResults::Result& SlcInlineResults::Keep(const Circumstances& circumstances,
                                                       Result result)
{
    return m_results.insert_or_assign(circumstances.Key(), std::move(result)).first->second;
}
