// Messages come from another program, so no member is assumed to exist or to have the right type.

#include "sqxls/SqxLsJson.h"

#include <cmath>

namespace {

std::size_t ReadCount(const SqxJson& json, const char* name)
{
    const SqxJson& count = SqxLsMember(json, name);
    const double value = count.is_number() ? count.get<double>() : -1;  // some clients write 4.0
    if (!(value >= 0 && value <= 0x7FFFFFFF) || value != std::floor(value))
        throw SqxLsError(SqxLsErrorCode::InvalidParams,
                         std::string("'") + name + "' of a position must be a count");
    return static_cast<std::size_t>(value);
}

}  // namespace

const SqxJson& SqxLsMember(const SqxJson& object, std::string_view path)
{
    static const SqxJson k_null;
    const SqxJson* at = &object;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const auto member = at->is_object() ? at->find(path.substr(0, end)) : at->end();
        if (!at->is_object() || member == at->end())
            return k_null;
        at = &*member;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return *at;
}

const std::string& SqxLsTextMember(const SqxJson& object, std::string_view path)
{
    const SqxJson& member = SqxLsMember(object, path);
    if (!member.is_string())
        throw SqxLsError(SqxLsErrorCode::InvalidParams,
                         "'" + std::string(path) + "' must be a string");
    return member.get_ref<const std::string&>();
}

bool SqxLsFlag(const SqxJson& object, std::string_view path)
{
    const SqxJson& member = SqxLsMember(object, path);
    return member.is_boolean() && member.get<bool>();
}

SqxLsPosition SqxLsReadPosition(const SqxJson& json)
{
    return {ReadCount(json, "line"), ReadCount(json, "character")};
}

SqxLsSpan SqxLsReadRange(const SqxJson& json, const SqxLsText& text)
{
    const SqxLsSpan span{text.OffsetOf(SqxLsReadPosition(SqxLsMember(json, "start"))),
                         text.OffsetOf(SqxLsReadPosition(SqxLsMember(json, "end")))};
    if (span.end < span.begin)
        throw SqxLsError(SqxLsErrorCode::InvalidParams, "A range must not end before it begins");
    return span;
}

SqxJson SqxLsWritePosition(const SqxLsPosition& position)
{
    return {{"line", position.line}, {"character", position.character}};
}

SqxJson SqxLsWriteRange(const SqxLsText& text, const SqxLsSpan& span)
{
    return {{"start", SqxLsWritePosition(text.PositionOf(span.begin))},
            {"end", SqxLsWritePosition(text.PositionOf(span.end))}};
}
