// Tested by tests/sqxls/SqxLsFormatTest.cpp.

#include "sqxls/SqxLsFormatting.h"

#include <algorithm>
#include <vector>

#include "sqxls/SqxLsLayout.h"

namespace {

SqxLsIndent IndentOf(const SqxJson& params)
{
    constexpr std::size_t k_widest = 16;
    SqxLsIndent indent;
    const SqxJson& width = SqxLsMember(params, "options/tabSize");
    if (width.is_number_unsigned())
        indent.width = std::clamp<std::size_t>(width.get<std::size_t>(), 1, k_widest);
    const SqxJson& spaces = SqxLsMember(params, "options/insertSpaces");
    indent.usesTabs = spaces.is_boolean() && !spaces.get<bool>();
    return indent;
}

SqxJson EditsWithin(const SqxLsText& text, const SqxLsSpan& range, const SqxLsIndent& indent)
{
    SqxJson edits = SqxJson::array();
    for (const SqxLsEdit& edit : SqxLsLayoutOf(text, indent))
        if (edit.span.begin >= range.begin && edit.span.end <= range.end)
            edits.push_back({{"range", SqxLsWriteRange(text, edit.span)}, {"newText", edit.text}});
    return edits;
}

}  // namespace

SqxJson SqxLsFormat(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsText& text = *workspace.DocumentOf(params).text;
    return EditsWithin(text, {0, text.Bytes().size()}, IndentOf(params));
}

SqxJson SqxLsFormatRange(SqxLsWorkspace& workspace, const SqxJson& params)
{
    const SqxLsText& text = *workspace.DocumentOf(params).text;
    SqxLsSpan range = SqxLsReadRange(SqxLsMember(params, "range"), text);
    // Extends the range to all blanks and line breaks before its first line, since one edit
    // replaces them together.
    const std::size_t lineBreak =
        range.begin == 0 ? std::string::npos : text.Bytes().rfind('\n', range.begin - 1);
    const std::size_t line = lineBreak == std::string::npos ? 0 : lineBreak;
    const std::size_t blanks =
        line == 0 ? 0 : text.Bytes().find_last_not_of(" \t\r\n\v\f", line) + 1;
    range.begin = std::min(range.begin, blanks);
    return EditsWithin(text, range, IndentOf(params));
}
