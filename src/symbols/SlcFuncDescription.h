#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/SlcDetailNode.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTypeNode.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcFuncVarArgExpr.h"

/// The language's library as records, read from rows of text.
///
/// A token of a row ends at a blank; `(`, `)`, `*` and `=` are tokens by themselves.
class SlcFuncDescription {
public:
    /// One overload, with the numbers of its detail rules.
    struct FuncInfo {
        std::string name;
        SlcTypeNode* returnType = nullptr;
        std::vector<SlcTypeNode*> argTypes;
        std::vector<SlcDetailNode*> argDetails;        // uniform or unknown
        std::vector<SlcStorageSpecNode*> argStorages;  // input or output
        int checkDetail = 0;
        int checkInlineDetail = 0;
        SlcCallSIMD simd = SlcCallSIMD::NoSimd;
        std::vector<SlcDetailNode*> simdDetails;
        std::string cName;  // empty where there is no primitive
        bool orderSensitive = false;
        bool foldable = false;
        std::unique_ptr<SlcFuncVarArgExpr> tail;  // null for a plain row
    };

    /// A row and the name that it begins with.
    struct NamedRow {
        std::string_view name;
        const char* row;
        bool hasTail;  // of the second table
    };

    static const char* const sm_funcInfoString[];         // ended by a null
    static const char* const sm_varArgsFuncInfoString[];  // ended by a null

    /// The rows of both tables that begin with this name, in their order. O(log n).
    [[nodiscard]] static std::span<const NamedRow> RowsOf(std::string_view name);

    /// A row of the first table, and one of the second, as a record. Rows are our own, so that a
    /// fault in one is fatal.
    [[nodiscard]] static FuncInfo ReadPlainRow(const char* row);
    [[nodiscard]] static FuncInfo ReadVarArgsRow(const char* row);

    // The readers move the cursor behind what they read.

    /// The character under the cursor behind any blanks.
    static char EatSpaces(const char*& cursor);
    /// The next token; empty at the end.
    [[nodiscard]] static std::string_view ReadString(const char*& cursor);
    /// A word that is no number is fatal.
    [[nodiscard]] static int ReadInt(const char*& cursor);
    /// A type, with the words that may stand in front of it: `uniform`, else the detail is unknown,
    /// and `output`, else the storage is input. An unknown type word is fatal.
    [[nodiscard]] static SlcTypeNode* ReadType(const char*& cursor, SlcDetailNode** detail,
                                               SlcStorageSpecNode** storage);
    /// The description of a tail.
    [[nodiscard]] static std::unique_ptr<SlcFuncVarArgExpr> ReadVarTypes(const char*& cursor);
    /// The whole-grid form, and for each of `nArgs` arguments the detail that it must have there.
    /// Nothing behind `nosimd` is read.
    static void ReadSIMDInfo(const char*& cursor, int nArgs, SlcCallSIMD& kind,
                             std::vector<SlcDetailNode*>& details);
};
