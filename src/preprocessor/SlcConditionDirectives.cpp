// The conditional directives, from `#if` to `#endif`, which select the active parts of a file.
//
// Tested by tests/preprocessor.

#include "preprocessor/SlcConditionValue.h"
#include "preprocessor/SlcDirectiveReader.h"

namespace {

using enum SlcSourceTokenKind;

}  // namespace

void SlcDirectiveReader::NoteUse(const SlcSourceToken& name, SlcPreprocessorTrace::UseKind kind)
{
    if (m_run.Trace() && m_macros.Find(name.text))
        m_run.Trace()->Use(name, name, kind);
}

void SlcDirectiveReader::BeginGroup(const SlcSourceToken& name, bool isActive)
{
    const bool isInSkipped = IsSkipping();
    File().groups.push_back(
        {name, isActive && !isInSkipped, isActive && !isInSkipped, isInSkipped, false});
}

bool SlcDirectiveReader::Condition(const SlcSourceToken& name)
{
    return SlcConditionHolds(m_run, name, m_expander.ExpandCondition(RestOfLine()));
}

void SlcDirectiveReader::If(const SlcSourceToken& name)
{
    if (!IsSkipping())
        return BeginGroup(name, Condition(name));
    SkipLine();
    BeginGroup(name, false);
}

void SlcDirectiveReader::IfDefined(const SlcSourceToken& name)
{
    const Tokens line = RestOfLine();
    const bool hasName = !line.empty() && line.front().kind == Name;
    if (!hasName && !IsSkipping())
        m_run.Error(line.empty() ? name : line.front(),
                    "'#" + std::string(name.text) + "' needs the name of a macro");
    const bool isDefined = hasName && m_macros.Find(line.front().text) != nullptr;
    if (hasName && !IsSkipping())
        NoteUse(line.front(), SlcPreprocessorTrace::UseKind::Asked);
    BeginGroup(name, hasName && isDefined == (name.text == "ifdef"));
}

void SlcDirectiveReader::Elif(const SlcSourceToken& name)
{
    auto& groups = File().groups;
    if (groups.empty()) {
        m_run.Error(name, "'#elif' without '#if'");
        return SkipLine();
    }
    if (groups.back().hasElse)
        m_run.Error(name, "'#elif' after '#else'");
    Group& group = groups.back();
    if (group.isInSkipped || group.wasActive || group.hasElse) {
        group.isActive = false;
        return SkipLine();
    }
    const bool holds = Condition(name);
    group.isActive = group.wasActive = holds;
}

void SlcDirectiveReader::Else(const SlcSourceToken& name)
{
    SkipLine();
    if (File().groups.empty())
        return m_run.Error(name, "'#else' without '#if'");
    Group& group = File().groups.back();
    if (group.hasElse)
        m_run.Error(name, "'#else' after '#else'");
    group.isActive = !group.isInSkipped && !group.wasActive && !group.hasElse;
    group.wasActive = group.wasActive || group.isActive;
    group.hasElse = true;
}

void SlcDirectiveReader::EndIf(const SlcSourceToken& name)
{
    SkipLine();
    if (File().groups.empty())
        return m_run.Error(name, "'#endif' without '#if'");
    File().groups.pop_back();
}
