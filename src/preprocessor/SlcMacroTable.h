#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "preprocessor/SlcPreprocessorRun.h"
#include "preprocessor/SlcSourceToken.h"

/// A macro whose value is computed at each use.
enum class SlcBuiltInMacro : std::uint8_t {
    None,
    Line,          // __LINE__
    File,          // __FILE__
    BaseFile,      // __BASE_FILE__
    IncludeLevel,  // __INCLUDE_LEVEL__
    Counter,       // __COUNTER__
    Date,          // __DATE__
    Time,          // __TIME__
};

/// The definition of a macro.
struct SlcMacro {
    static constexpr int k_noParameter = -1;

    struct BodyToken {
        SlcSourceToken token;
        int parameter = k_noParameter;  // index of the parameter that the token names
        bool isQuoted = false;          // "#" precedes the parameter
        bool joinsNext = false;         // "##" follows
    };

    std::vector<std::string_view> parameters;
    std::vector<BodyToken> body;
    bool isFunction = false;
    bool isVariadic = false;  // the last parameter takes all further arguments
    SlcBuiltInMacro builtIn = SlcBuiltInMacro::None;
};

/// The macros that are defined at the current place of the source.
class SlcMacroTable {
public:
    using Tokens = std::vector<SlcSourceToken>;

    struct Entry {
        std::uint32_t number = 0;               // identifies the name in hide sets
        std::shared_ptr<const SlcMacro> macro;  // null if the name is not defined
    };

    /// Defines the built-in macros and the predefined constants.
    explicit SlcMacroTable(SlcPreprocessorRun& run);

    /// Returns the entry, valid as long as the table; null if the macro is not defined.
    [[nodiscard]] const Entry* Find(std::string_view name) const;
    /// Defines the macro of a `#define`, or reports an error. `line` is the rest of the line after
    /// that word, and `directive` is the place for a report if the line is empty. Warns if the
    /// macro is already defined differently.
    void Define(const SlcSourceToken& directive, const Tokens& line);
    /// Does nothing for a name that is not defined.
    void Undefine(std::string_view name);

private:
    class DefinitionReader;

    void Set(std::string_view name, SlcMacro macro);

    SlcPreprocessorRun& m_run;
    std::unordered_map<std::string_view, Entry> m_entries;  // entries are never erased
};
