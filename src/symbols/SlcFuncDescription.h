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

/// Reads the rows of the language's library into records.
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
        std::string cName;  // empty if there is no primitive
        bool orderSensitive = false;
        bool foldable = false;
        std::unique_ptr<SlcFuncVarArgExpr> tail;  // null for a plain row
    };

    /// A row and the name at its start.
    struct NamedRow {
        std::string_view name;
        const char* row;
        bool hasTail;  // in the second table
    };

    static const char* const sm_funcInfoString[];         // ended by a null
    static const char* const sm_varArgsFuncInfoString[];  // ended by a null

    /// Returns the rows of both tables with this name, in the order of the tables. O(log n).
    [[nodiscard]] static std::span<const NamedRow> RowsOf(std::string_view name);

    /// Parse a row of the first and of the second table. The tables are part of the compiler, so an
    /// error in a row is fatal.
    [[nodiscard]] static FuncInfo ReadPlainRow(const char* row);
    [[nodiscard]] static FuncInfo ReadVarArgsRow(const char* row);

    // The readers advance the cursor past the text that they read.

    /// Skips blanks and returns the character at the cursor.
    static char EatSpaces(const char*& cursor);
    /// Returns the next token; empty at the end.
    [[nodiscard]] static std::string_view ReadString(const char*& cursor);
    /// A word that is not a number is fatal.
    [[nodiscard]] static int ReadInt(const char*& cursor);
    /// Reads a type with its optional prefixes `uniform` and `output`. Without them the detail is
    /// unknown and the storage is input. An unknown type is fatal.
    [[nodiscard]] static SlcTypeNode* ReadType(const char*& cursor, SlcDetailNode** detail,
                                               SlcStorageSpecNode** storage);
    /// Reads the description of a tail.
    [[nodiscard]] static std::unique_ptr<SlcFuncVarArgExpr> ReadVarTypes(const char*& cursor);
    /// Reads the whole-grid form, and the detail that it requires of each of `nArgs` arguments.
    /// After `nosimd` nothing more is read.
    static void ReadSIMDInfo(const char*& cursor, int nArgs, SlcCallSIMD& kind,
                             std::vector<SlcDetailNode*>& details);
};
