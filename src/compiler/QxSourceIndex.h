#pragma once

#include <string>
#include <string_view>
#include <vector>

// The meanings of the names of a compiled source, for editors. A compile makes an index if
// `QxCompileOptions::makesIndex` is set, also for a source with faults, but not for a preprocessed
// one. `docs/compiling.md` contains an example.
//
// Files are indices into `QxSourceIndex::files`; lines and columns count from 1; columns and
// lengths are in bytes. All places are those in the files as read, regardless of `#line`
// directives.

/// A part of a line. `file` is -1 for text from no file, such as a macro that an option defines.
struct QxSourcePlace {
    int file = -1;
    int line = 0;
    int column = 0;
    int length = 0;

    bool operator==(const QxSourcePlace&) const = default;
};

/// A part of a file, up to its end position. Text from a macro is located where the macro is used.
struct QxSourceRange {
    int file = -1;
    int line = 0;
    int column = 0;
    int endLine = 0;
    int endColumn = 0;  // of the first character after the range

    /// True for a place in the range or right after its end.
    [[nodiscard]] bool Contains(int otherFile, int otherLine, int otherColumn) const;
    bool operator==(const QxSourceRange&) const = default;
};

enum class QxNameKind {
    Shader,
    Function,    // defined in the source
    Parameter,   // of a shader or a function
    Local,       // variable in a body
    Predefined,  // variable
    BuiltIn,     // function, one name for each overload
    Shadeop,     // function of a library
    Macro,
    Space,  // a coordinate system or a color space, named in a string
};

enum class QxDetail {
    None,  // not applicable: a function, a macro
    Uniform,
    Varying,
    Open,  // in a function: depends on what each call passes
};

enum class QxStorage { None, Input, Output, Local, Extern, ReadOnly, ReadWrite };

/// A formal of a function, or of an overload of a built-in.
struct QxIndexedFormal {
    std::string name;  // empty for built-ins
    std::string type;
    QxDetail detail = QxDetail::None;  // Uniform if the argument must be uniform
    QxStorage storage = QxStorage::Input;
    std::string text;  // as in a declaration: "output uniform float x"
};

/// A definition, or a name of the language. Names that the source does not define are included if
/// it uses them.
struct QxIndexedName {
    QxNameKind kind = QxNameKind::Local;
    std::string name;
    std::string type;                    // "color", "float[3]"; for a function, of its result
    QxDetail detail = QxDetail::None;    // as declared, or the language's default
    bool declaresDetail = false;         // the declaration states the detail
    QxDetail inferred = QxDetail::None;  // of all values that are assigned to a variable
    QxStorage storage = QxStorage::None;
    std::string declaration;   // on one line: "uniform float Kd = 1", "color f(point p)"
    std::string defaultValue;  // or initializer, as written; for a macro, its body
    std::vector<QxIndexedFormal> formals;  // of functions and built-ins
    std::vector<std::string> macroParameters;
    bool takesMore = false;  // a built-in takes further arguments after its formals
    QxSourcePlace place;     // of the name; `file` is -1 if no file defines it
    QxSourceRange range;     // of the definition
    int owner = -1;          // index in `names` of the enclosing shader or function; -1 if none
};

enum class QxUseRole { Definition, Read, Write, Call, Ask };  // `Ask`: `#ifdef`, `#undef`

/// A place where a name is used.
struct QxIndexedUse {
    int name = -1;  // index in `names`
    QxUseRole role = QxUseRole::Read;
    QxSourcePlace place;               // of its characters
    QxDetail detail = QxDetail::None;  // of the value here
    std::string type;                  // of the value here
    bool isInMacro = false;            // `place` is in the definition of a macro
    QxSourcePlace macro;               // if so, where the macro's name is used
};

/// A call of a function, or a texture access.
struct QxIndexedCall {
    int name = -1;        // index in `names` of the called overload; -1 if the checks found none
    std::string text;     // the called name
    QxSourcePlace place;  // of the name
    QxSourceRange range;  // up to the closing parenthesis
    std::vector<QxSourceRange> arguments;
    std::string type;  // of the result
    QxDetail detail = QxDetail::None;
};

enum class QxBlockKind { Shader, Function, Block, LightLoop };

/// A part of the source with local names.
struct QxIndexedBlock {
    QxBlockKind kind = QxBlockKind::Block;
    QxSourceRange range;  // with the braces; for a shader or function, the whole definition
    int parent = -1;      // index in `blocks`
    int owner = -1;       // index in `names`, for a shader or function
    struct Visible {
        int name = -1;      // index in `names`
        unsigned from = 0;  // index of the first token that sees it
    };
    std::vector<Visible> names;  // in source order
    bool isClosed = false;       // enclosing variables are not visible (`--strict`)
    unsigned begin = 0;          // index of the first token of the block
    unsigned end = 0;            // index of the first token after it
};

/// An expanded use of a macro. Tests whether a macro is defined are only in `uses`.
struct QxIndexedMacroUse {
    int name = -1;          // index in `names`; -1 for a macro of the preprocessor itself
    QxSourceRange range;    // with its arguments
    std::string expansion;  // as the compiler reads it; empty for a use within another macro
};

struct QxIndexedInclude {
    QxSourcePlace place;  // of the name with its quotes
    int file = -1;        // index of the file that it opened
};

/// The call that encloses a place, as far as it has been written.
struct QxCallAtPlace {
    std::string name;     // empty if no call encloses the place
    QxSourcePlace place;  // of the name
    int argument = 0;     // from 0
    int call = -1;        // index in `calls`, if the checks saw the complete call
};

/// The index of a source. It is a value and does not refer to the compilation.
class QxSourceIndex {
public:
    std::vector<std::string> files;  // those that were read: the source and its includes
    std::string shaderKind;          // such as "surface"; empty if there is no shader
    std::vector<QxIndexedName> names;
    std::vector<QxIndexedUse> uses;  // sorted by file, line and column; includes definitions
    std::vector<QxIndexedCall> calls;
    std::vector<QxIndexedBlock> blocks;  // first the whole source; parents before children
    std::vector<QxIndexedMacroUse> macroUses;
    std::vector<QxIndexedInclude> includes;

    /// Returns the index of a file; -1 if it was not read. The source itself is 0.
    [[nodiscard]] int FileNumber(std::string_view path) const;
    /// Returns the use whose name covers or ends at a place; null if there is none. O(log n).
    [[nodiscard]] const QxIndexedUse* UseAt(int file, int line, int column) const;
    /// Returns all uses of a name, including its definition, sorted by place. O(n).
    [[nodiscard]] std::vector<const QxIndexedUse*> UsesOf(int name) const;
    /// Returns the variables and functions of the source that are visible at a place, nearest
    /// first, without hidden variables. Built-ins and predefined variables (`QxLanguage.h`) are
    /// omitted, except variables that an `extern` declaration names, and so are macros. O(n).
    [[nodiscard]] std::vector<int> NamesInScope(int file, int line, int column) const;
    /// Returns the index of the innermost block that contains a place: 0, the whole source, if no
    /// other block does; -1 if the index is empty. O(n).
    [[nodiscard]] int BlockAt(int file, int line, int column) const;
    /// Returns the innermost call whose parentheses are open at a place. Inspects only tokens, so
    /// that incomplete calls are found. Within the arguments of a macro, it inspects those
    /// arguments and not the macro's body. O(n).
    [[nodiscard]] QxCallAtPlace CallAt(int file, int line, int column) const;

    /// A word, a sign or a literal, as the compiler read it; `place` is that of its characters.
    struct Token {
        QxSourcePlace place;
        QxSourcePlace use;  // where its macro is used; `file` is -1 if it is not from a macro
        std::string text;
        bool isBody = false;  // from the definition of a macro, not from its arguments
    };
    std::vector<Token> tokens;

private:
    /// Returns the number of tokens before a place.
    [[nodiscard]] unsigned OrderAt(int file, int line, int column) const;
    /// Returns where the outermost use of a macro that contains a place begins, with the length 0;
    /// `file` is -1 if there is none. O(n).
    [[nodiscard]] QxSourcePlace MacroAround(int file, int line, int column) const;
};
