#pragma once

#include <string>
#include <string_view>
#include <vector>

// The meanings of the names of a compiled source, for editors. A compile makes an index if
// `QxCompileOptions::makesIndex` is set, also for a source with faults, but not for one that is
// already preprocessed. `docs/compiling.md` contains an example.
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

/// A part of a file, up to its end position. Text from the body of a macro is located where the
/// macro is used.
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
    Predefined,  // variable, or `PI`
    BuiltIn,     // function, one name for each overload; texture access, one for each result type
    Shadeop,     // function of a library
    Macro,
    Space,  // a coordinate system or a color space, named in a string
};

enum class QxDetail {
    None,  // not applicable: a function, a macro
    Uniform,
    Varying,
    Open,  // in a function: depends on what each call passes; also if the checks did not find it
};

enum class QxStorage { None, Input, Output, Local, Extern, ReadOnly, ReadWrite };

/// A parameter of a shader, or a formal of a function or of an overload of a built-in.
struct QxIndexedFormal {
    std::string name;  // empty for built-ins and shadeops
    std::string type;
    QxDetail detail = QxDetail::None;  // of a function: Uniform if the argument must be uniform
    QxStorage storage = QxStorage::Input;
    std::string text;  // as in a declaration: "output uniform float x"; with the default, if any
};

/// A name that the source defines, a macro that is defined for the compile, or another name that
/// the source uses.
struct QxIndexedName {
    QxNameKind kind = QxNameKind::Local;
    std::string name;
    std::string type;  // "color", "float[3]"; for a function, of its result; for a shader, its kind
    QxDetail detail = QxDetail::None;  // as declared, or the language's default
    bool declaresDetail = false;       // the declaration states the detail
    /// For a local without a declared detail: the detail of all values that are assigned to it. For
    /// other variables, the same as `detail`.
    QxDetail inferred = QxDetail::None;
    QxStorage storage = QxStorage::None;
    std::string declaration;   // on one line: "uniform float Kd = 1", "color f(point p)"
    std::string defaultValue;  // or initializer, with macros expanded; for a macro, its body
    std::vector<QxIndexedFormal> formals;  // of shaders and of all kinds of functions
    std::vector<std::string> macroParameters;
    bool takesMore = false;  // a built-in takes further arguments after its formals
    QxSourcePlace place;     // of the name; `file` is -1 if no file defines it
    QxSourceRange range;     // of the definition; for a variable, from its name to its value
    int owner = -1;          // index in `names` of the enclosing shader or function; -1 if none
};

/// `Ask`: a macro in `#ifdef`, `#ifndef`, `defined` or `#undef`.
enum class QxUseRole { Definition, Read, Write, Call, Ask };

/// A place where a name is used or defined.
struct QxIndexedUse {
    int name = -1;  // index in `names`
    QxUseRole role = QxUseRole::Read;
    QxSourcePlace place;               // of its characters
    QxDetail detail = QxDetail::None;  // of the value here, or of the definition
    std::string type;                  // of the value here, or of the definition
    bool isInMacro = false;            // `place` is in the definition of a macro
    QxSourcePlace macro;  // if so, where that macro is used; not set if the name is a macro
};

/// A call of a function, or a texture access.
struct QxIndexedCall {
    int name = -1;        // index in `names` of the called overload; -1 if the checks found none
    std::string text;     // the called name
    QxSourcePlace place;  // of the name
    QxSourceRange range;  // up to the closing parenthesis
    std::vector<QxSourceRange> arguments;  // of a texture access: without the channel
    std::string type;                      // of the result
    QxDetail detail = QxDetail::None;
};

enum class QxBlockKind { Shader, Function, Block, LightLoop };

/// A part of the source with local names. The block of the whole source has no range.
struct QxIndexedBlock {
    QxBlockKind kind = QxBlockKind::Block;
    QxSourceRange range;  // with the braces; for a shader or function, the whole definition
    int parent = -1;      // index in `blocks`; -1 for the whole source
    int owner = -1;       // index in `names`, for a shader or function; otherwise -1
    struct Visible {
        int name = -1;      // index in `names`
        unsigned from = 0;  // index of the first token that sees it
    };
    std::vector<Visible> names;  // in the order in which they become visible
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

/// An `#include` that opened a file.
struct QxIndexedInclude {
    QxSourcePlace place;  // of the name with its quotes
    int file = -1;        // index of the file that it opened
};

/// The call that encloses a place, as far as it has been written.
struct QxCallAtPlace {
    std::string name;     // empty if no call encloses the place
    QxSourcePlace place;  // of the name
    int argument = 0;     // from 0
    int call = -1;        // index in `calls`; -1 if the parser did not see the complete call
};

/// The index of a source. It is a value and does not refer to the compilation.
class QxSourceIndex {
public:
    std::vector<std::string> files;  // those that were read: the source and its includes
    std::string shaderKind;          // such as "surface"; empty if no shader was parsed
    std::vector<QxIndexedName> names;
    std::vector<QxIndexedUse> uses;  // sorted by file, line and column; only those in files
    std::vector<QxIndexedCall> calls;
    std::vector<QxIndexedBlock> blocks;  // first the whole source; parents before children
    std::vector<QxIndexedMacroUse> macroUses;
    std::vector<QxIndexedInclude> includes;

    /// Returns the index of a file; -1 if it was not read. The source itself is 0.
    [[nodiscard]] int FileNumber(std::string_view path) const;
    /// Returns the use whose name covers or ends at a place, the first if there are several; null
    /// if there is none. O(log n).
    [[nodiscard]] const QxIndexedUse* UseAt(int file, int line, int column) const;
    /// Returns all uses of a name, including its definition, sorted by place. O(n).
    [[nodiscard]] std::vector<const QxIndexedUse*> UsesOf(int name) const;
    /// Returns the variables and functions of the source that are visible at a place, nearest
    /// first, without variables that a nearer one hides. Macros, built-ins and predefined variables
    /// (`QxLanguage.h`) are omitted, except predefined variables that an `extern` declaration
    /// names. O(n log n).
    [[nodiscard]] std::vector<int> NamesInScope(int file, int line, int column) const;
    /// Returns the index of the innermost block that contains a place: 0, the whole source, if no
    /// other block does; -1 if the index is empty. O(n).
    [[nodiscard]] int BlockAt(int file, int line, int column) const;
    /// Returns the innermost call whose parentheses are open at a place; its name is empty if there
    /// is none. Inspects only tokens, so that incomplete calls are found. Within the arguments of a
    /// macro, it inspects those arguments and not the macro's body. O(n).
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
    /// Returns the number of tokens before a place, those of other files included.
    [[nodiscard]] unsigned OrderAt(int file, int line, int column) const;
    /// Returns where the outermost use of a macro that contains a place begins, with the length 0;
    /// `file` is -1 if there is none. O(n).
    [[nodiscard]] QxSourcePlace MacroAround(int file, int line, int column) const;
};
