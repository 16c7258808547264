// A key has one character for each input of an evaluation: whether the call is in a light
// statement, whether shader code reaches it, whether reports are suppressed, the detail that its
// context requests, and the detail of each argument. " S -uv" is a call outside of light statements
// that shader code reaches, evaluated with reports; its context requests no detail, and it has a
// uniform and a varying argument.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "semantics/SlcInlineResults.h"

#include <utility>

SlcInlineResults::Circumstances::Circumstances(const SlcCallPlace& place, bool isQuiet)
{
    // The rest of the place is not part of the key: a compile has one type of shader, and details
    // do not depend on the depth of calls.
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
