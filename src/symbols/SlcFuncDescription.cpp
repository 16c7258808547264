// A row of the library is a text of words, which is parsed from left to right when its name is
// first used in a source:
//
//     mix float 3 float float float 0 0 CALL_PRIM_MIX_1D 0 0 simd varying varying uniform
//     name, result, count, arguments, two detail rules, primitive, sees order, may be folded, form
//
// An argument may be prefixed with `output` and `uniform`. A row of the second table describes its
// tail after the fixed arguments: `(a b)` in this order, `type *` any number, `named (...)` pairs
// of a name and a value in any order, `= value` the default.
//
// A word that cannot be parsed is a fault in the table, and fatal.
//
// Tested by tests/symbols/SlcFuncDescriptionTest.cpp.

#include "symbols/SlcFuncDescription.h"

#include <charconv>
#include <ostream>

#include "support/SlcDiagnostics.h"

namespace {

struct TypeWord {
    std::string_view word;
    SlcTypeNode* (*type)();
};

//   word           type
constexpr TypeWord k_typeWords[] = {
    {"float", SlcTypeNode::AFloat},
    {"string", SlcTypeNode::AString},
    {"color", SlcTypeNode::AColor},
    {"point", SlcTypeNode::APoint},
    {"vector", SlcTypeNode::AVector},
    {"normal", SlcTypeNode::ANormal},
    {"matrix", SlcTypeNode::AMatrix},
    {"void", SlcTypeNode::AVoid},
    {"any", SlcTypeNode::AAnyType},
    {"any-point", SlcTypeNode::AAnyPoint},
    {"any-vector", SlcTypeNode::AAnyVector},
    {"array-float", [] { return SlcTypeNode::CreateArrayType(SlcTypeNode::AFloat()); }},
    {"array-color", [] { return SlcTypeNode::CreateArrayType(SlcTypeNode::AColor()); }},
    {"array-point", [] { return SlcTypeNode::CreateArrayType(SlcTypeNode::APoint()); }},
};

bool EndsToken(char c)
{
    return c == '\0' || c == ' ' || c == '(' || c == ')' || c == '*' || c == '=';
}

/// Reads an optional "= default" after a type.
std::string ReadDefault(const char*& cursor)
{
    if (SlcFuncDescription::EatSpaces(cursor) != '=')
        return {};
    ++cursor;
    return std::string(SlcFuncDescription::ReadString(cursor));
}

std::unique_ptr<SlcFuncVarArgSingle> ReadSingle(const char*& cursor)
{
    SlcDetailNode* detail = nullptr;
    SlcStorageSpecNode* storage = nullptr;
    SlcTypeNode* type = SlcFuncDescription::ReadType(cursor, &detail, &storage);
    std::string defaultValue = ReadDefault(cursor);
    const bool repeated = SlcFuncDescription::EatSpaces(cursor) == '*';
    if (repeated)
        ++cursor;
    return std::make_unique<SlcFuncVarArgSingle>(type, detail, storage, repeated,
                                                 std::move(defaultValue));
}

std::unique_ptr<SlcFuncVarArgExpr> ReadNamedPairs(const char*& cursor)
{
    auto list = std::make_unique<SlcFuncVarArgList>(SlcFuncVarArgList::Order::Named);
    while (SlcFuncDescription::EatSpaces(cursor) != ')') {
        std::string name(SlcFuncDescription::ReadString(cursor));
        list->Append(std::make_unique<SlcFuncVarArgPair>(std::move(name), ReadSingle(cursor)));
    }
    ++cursor;
    return list;
}

/// Reads name, return type and fixed arguments.
SlcFuncDescription::FuncInfo ReadHead(const char*& cursor)
{
    SlcFuncDescription::FuncInfo info;
    SlcDetailNode* detail = nullptr;
    SlcStorageSpecNode* storage = nullptr;
    info.name = SlcFuncDescription::ReadString(cursor);
    info.returnType = SlcFuncDescription::ReadType(cursor, &detail, &storage);
    for (int left = SlcFuncDescription::ReadInt(cursor); left > 0; --left) {
        info.argTypes.push_back(SlcFuncDescription::ReadType(cursor, &detail, &storage));
        info.argDetails.push_back(detail);
        info.argStorages.push_back(storage);
    }
    return info;
}

/// Reads rules, primitive, flags and the whole-grid form for `nArgs` arguments.
void ReadRest(const char*& cursor, int nArgs, SlcFuncDescription::FuncInfo& info)
{
    info.checkDetail = SlcFuncDescription::ReadInt(cursor);
    info.checkInlineDetail = SlcFuncDescription::ReadInt(cursor);
    info.cName = SlcFuncDescription::ReadString(cursor);
    if (info.cName == "NOT_YET")
        info.cName.clear();
    info.orderSensitive = SlcFuncDescription::ReadInt(cursor) == 1;
    info.foldable = SlcFuncDescription::ReadInt(cursor) == 1;
    SlcFuncDescription::ReadSIMDInfo(cursor, nArgs, info.simd, info.simdDetails);
}

}  // namespace

char SlcFuncDescription::EatSpaces(const char*& cursor)
{
    while (*cursor == ' ')
        ++cursor;
    return *cursor;
}

std::string_view SlcFuncDescription::ReadString(const char*& cursor)
{
    EatSpaces(cursor);
    const char* begin = cursor;
    while (!EndsToken(*cursor))
        ++cursor;
    // A punctuation character is a token by itself.
    if (cursor == begin && *cursor != '\0')
        ++cursor;
    return {begin, static_cast<std::size_t>(cursor - begin)};
}

int SlcFuncDescription::ReadInt(const char*& cursor)
{
    const std::string_view word = ReadString(cursor);
    int value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size())
        FatalError("Invalid number during function description list building: " +
                   std::string(word));
    return value;
}

SlcTypeNode* SlcFuncDescription::ReadType(const char*& cursor, SlcDetailNode** detail,
                                          SlcStorageSpecNode** storage)
{
    *detail = SlcDetailNode::AUnknown();
    *storage = SlcStorageSpecNode::AInput();
    std::string_view word = ReadString(cursor);
    if (word == "output") {
        *storage = SlcStorageSpecNode::AOutput();
        word = ReadString(cursor);
    }
    if (word == "uniform") {
        *detail = SlcDetailNode::AUniform();
        word = ReadString(cursor);
    }
    for (const TypeWord& entry : k_typeWords)
        if (entry.word == word)
            return entry.type();
    FatalError("Invalid type during function description list building: " + std::string(word));
}

std::unique_ptr<SlcFuncVarArgExpr> SlcFuncDescription::ReadVarTypes(const char*& cursor)
{
    if (EatSpaces(cursor) == '(') {
        ++cursor;
        auto list = std::make_unique<SlcFuncVarArgList>(SlcFuncVarArgList::Order::Positional);
        while (EatSpaces(cursor) != ')')
            list->Append(ReadVarTypes(cursor));
        ++cursor;
        return list;
    }
    const char* afterWord = cursor;
    if (ReadString(afterWord) != "named")
        return ReadSingle(cursor);
    cursor = afterWord;
    EatSpaces(cursor);
    ++cursor;
    return ReadNamedPairs(cursor);
}

void SlcFuncDescription::ReadSIMDInfo(const char*& cursor, int nArgs, SlcCallSIMD& kind,
                                      std::vector<SlcDetailNode*>& details)
{
    const std::string_view word = ReadString(cursor);
    if (word == "nosimd") {
        kind = SlcCallSIMD::NoSimd;
        return;
    }
    if (word == "simd")
        kind = SlcCallSIMD::Simd;
    else if (word == "always-simd")
        kind = SlcCallSIMD::AlwaysSimd;
    else
        SlcReports() << "Bad SIMD info : " << word << '\n';
    for (; nArgs > 0; --nArgs) {
        const std::string_view detail = ReadString(cursor);
        if (detail == "varying")
            details.push_back(SlcDetailNode::AVarying());
        else if (detail == "uniform")
            details.push_back(SlcDetailNode::AUniform());
    }
}

SlcFuncDescription::FuncInfo SlcFuncDescription::ReadPlainRow(const char* row)
{
    FuncInfo info = ReadHead(row);
    ReadRest(row, static_cast<int>(info.argTypes.size()), info);
    return info;
}

SlcFuncDescription::FuncInfo SlcFuncDescription::ReadVarArgsRow(const char* row)
{
    FuncInfo info = ReadHead(row);
    info.tail = ReadVarTypes(row);
    const int fixed = static_cast<int>(info.argTypes.size());
    const int most = info.tail->GetMaxSize(false);
    ReadRest(row, most < 0 ? fixed : fixed + most, info);
    return info;
}
