#pragma once

#include <string>
#include <string_view>
#include <vector>

// The meanings of the names of a compiled source, for editors. A compile makes an index if
// `QxCompileOptions::makesIndex` asks for it, also of a source with faults. `docs/compiling.md`
// shows how.
//
// Files are numbers into `QxSourceIndex::files`, lines and columns count from 1, columns and
// lengths are in bytes. All places are those of the files as they were read, whatever `#line`
// directives call them.

/// A piece of a line. `file` is -1 for text from no file, such as a macro of the options.
struct QxSourcePlace {
    int file = -1;
    int line = 0;
    int column = 0;
    int length = 0;

    bool operator==(const QxSourcePlace&) const = default;
};

/// A piece of a file, up to the place where it ends. Text from macros counts as being where they
/// are used.
struct QxSourceRange {
    int file = -1;
    int line = 0;
    int column = 0;
    int endLine = 0;
    int endColumn = 0;  // of the first character after it

    [[nodiscard]] bool Contains(int otherFile, int otherLine, int otherColumn) const;
    bool operator==(const QxSourceRange&) const = default;
};

enum class QxNameKind {
    Shader,
    Function,    // of the source
    Parameter,   // of a shader or a function
    Local,       // variable
    Predefined,  // variable
    BuiltIn,     // function, one name for each overload
    Shadeop,     // function of a library
    Macro,
    Space,  // a coordinate system or a color space, named in a string
};

enum class QxDetail {
    None,  // it has none: a function, a macro
    Uniform,
    Varying,
    Open,  // in a function: that of what each call passes
};

enum class QxStorage { None, Input, Output, Local, Extern, ReadOnly, ReadWrite };

/// A formal of a function or of an overload of a built-in.
struct QxIndexedFormal {
    std::string name;  // empty for built-ins
    std::string type;
    QxDetail detail = QxDetail::None;  // Uniform if the argument must be
    QxStorage storage = QxStorage::Input;
    std::string text;  // as a declaration has it: "output uniform float x"
};

/// A definition, or what the language defines. The names that a source does not define are there
/// if it uses them.
struct QxIndexedName {
    QxNameKind kind = QxNameKind::Local;
    std::string name;
    std::string type;                    // "color", "float[3]"; of a function, of its result
    QxDetail detail = QxDetail::None;    // as declared, or as the language takes it without a word
    bool declaresDetail = false;         // the source has the word
    QxDetail inferred = QxDetail::None;  // of all values that a variable is given
    QxStorage storage = QxStorage::None;
    std::string declaration;   // on one line: "uniform float Kd = 1", "color f(point p)"
    std::string defaultValue;  // or initializer, as written; of a macro, what it stands for
    std::vector<QxIndexedFormal> formals;  // of functions and built-ins
    std::vector<std::string> macroParameters;
    bool takesMore = false;  // a built-in takes further arguments after its formals
    QxSourcePlace place;     // of the name; `file` is -1 for what no file defines
    QxSourceRange range;     // of the definition
    int owner = -1;          // in `names`: the shader or function that holds it; -1 for none
};

enum class QxUseRole { Definition, Read, Write, Call, Ask };  // `Ask`: `#ifdef`, `#undef`

/// A place where a name is used.
struct QxIndexedUse {
    int name = -1;  // in `names`
    QxUseRole role = QxUseRole::Read;
    QxSourcePlace place;               // of its characters
    QxDetail detail = QxDetail::None;  // of the value here
    std::string type;                  // of the value here
    bool isInMacro = false;            // `place` is in the definition of a macro
    QxSourcePlace macro;               // if so, the name of the macro where it is used
};

/// A call of a function, or a texture access.
struct QxIndexedCall {
    int name = -1;        // in `names`: the overload that it means; -1 if the checks found none
    std::string text;     // the name that is called
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
    QxSourceRange range;  // with the braces; of a shader or function, the whole definition
    int parent = -1;      // in `blocks`
    int owner = -1;       // in `names`: of a shader or function
    struct Visible {
        int name = -1;      // in `names`
        unsigned from = 0;  // in the order of the tokens
    };
    std::vector<Visible> names;  // in the order of the source
    bool isClosed = false;       // no variables around it are seen (`--strict`)
    unsigned begin = 0;          // in the order of the tokens
    unsigned end = 0;
};

/// A use of a macro, or a question about it.
struct QxIndexedMacroUse {
    int name = -1;          // in `names`; -1 for a macro of the preprocessor itself
    QxSourceRange range;    // with its arguments
    std::string expansion;  // as the compiler reads it; empty for a use inside of another macro
};

struct QxIndexedInclude {
    QxSourcePlace place;  // of the name with its quotes
    int file = -1;        // that it opened
};

/// The call that a place is in, as far as it has been written.
struct QxCallAtPlace {
    std::string name;     // empty if the place is in no call
    QxSourcePlace place;  // of the name
    int argument = 0;     // from 0
    int call = -1;        // in `calls`, if the checks saw it whole
};

/// An index. It is a value: it refers to nothing of the compile.
class QxSourceIndex {
public:
    std::vector<std::string> files;  // that were read: the source, and what it includes
    std::string shaderKind;          // "surface" and the like; empty if there is no shader
    std::vector<QxIndexedName> names;
    std::vector<QxIndexedUse> uses;  // by file, line and column; definitions are uses too
    std::vector<QxIndexedCall> calls;
    std::vector<QxIndexedBlock> blocks;  // the first is the whole source; parents come first
    std::vector<QxIndexedMacroUse> macroUses;
    std::vector<QxIndexedInclude> includes;

    /// The number of a file; -1 if it was not read. The source itself is 0.
    [[nodiscard]] int FileNumber(std::string_view path) const;
    /// The use whose name covers a place or ends there; null for none. O(log n).
    [[nodiscard]] const QxIndexedUse* UseAt(int file, int line, int column) const;
    /// All uses of a name, its definition too, by their places. O(n).
    [[nodiscard]] std::vector<const QxIndexedUse*> UsesOf(int name) const;
    /// The names visible at a place: the variables and functions of the source, nearest first, and
    /// none that another one hides. Macros, built-ins and predefined variables are left out, which
    /// are the same everywhere (`QxLanguage.h`), except those of a light loop. O(n).
    [[nodiscard]] std::vector<int> NamesInScope(int file, int line, int column) const;
    /// The innermost block that holds a place. O(n).
    [[nodiscard]] int BlockAt(int file, int line, int column) const;
    /// The innermost call whose parentheses are open at a place. Looks at the tokens alone, so that
    /// a call that is being written counts, and at those of the arguments of a macro, not at what
    /// it puts around them. O(n).
    [[nodiscard]] QxCallAtPlace CallAt(int file, int line, int column) const;

    /// A word, a sign or a literal, as the compiler read it; `place` is that of its characters.
    struct Token {
        QxSourcePlace place;
        QxSourcePlace use;  // of a macro that it comes from; `file` is -1 if it comes from none
        std::string text;
        bool isBody = false;  // it stands in the definition of a macro, not between its arguments
    };
    std::vector<Token> tokens;

private:
    /// The number of tokens before a place.
    [[nodiscard]] unsigned OrderAt(int file, int line, int column) const;
    /// The name of the outermost macro between whose parentheses a place is; in no file if there is
    /// none. O(n).
    [[nodiscard]] QxSourcePlace MacroAround(int file, int line, int column) const;
};
