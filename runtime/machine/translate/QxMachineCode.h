#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "kernels/QxCode.h"
#include "machine/translate/QxShadeops.h"
#include "sqx/SqxShader.h"

/// The number of points in a strip of parallel brackets that neither specify another number nor run
/// point by point.
constexpr unsigned int k_qxMachineStrip = 256;
/// The highest number of points that brackets may specify for a strip.
constexpr unsigned int k_qxLongestStrip = 1024;

/// The storage of a variable of a program: who owns its values, and how large they are. There is
/// one for each variable number in code.
struct QxStorage {
    enum class Kind : unsigned char {
        Predefined,  // number: row in the table of predefined variables
        Parameter,   // number: index of the parameter
        Local,
        Borrowed,   // like a local, but its texts belong to other variables
        Strip,      // like a local, but with room for one strip; see `QxUseStripLocals`
        Constant,   // number: index of the constant
        Alias,      // stands for one array element, the same for all points
        Reference,  // an array element for each point; number: 1 if the array is uniform
        Nowhere,    // for discarded results, unused locals and `Ng`, and unbound references
        Ng,         // the geometric normal of the grid
    };
    Kind kind = Kind::Local;
    QxStored stored = QxStored::Number;
    bool varying = false;
    std::uint32_t size = 1;
    std::uint32_t number = 0;
    bool written = false;  // an instruction writes it
};

/// The value of a constant in each form in which it may be read. A number is the first of
/// `numbers`; a number that is read as a triple is a separate constant with three equal numbers.
/// The storage that refers to a constant selects the form.
struct QxConstant {
    float numbers[3] = {0, 0, 0};
    QxStopAndBool flag = false;
    const char* text = "";
};

/// A translated byte-code file. The variables are those of the file in order, then those that the
/// translation added.
///
/// `QxMachineProgram` sets `shadeops`, and then `QxTranslator` sets the rest. After that nothing
/// changes except that shadeops are loaded at their first call, so runs in several threads can
/// share it. A run holds the addresses of constants, and a constant that of its text, so both are
/// kept in deques, whose elements do not move when others are added.
struct QxMachineCode {
    /// Computes the default value of a parameter: after `code` has run, the value is in `result`.
    struct Initializer {
        std::size_t parameter = 0;
        std::uint32_t result = 0;  // a variable
        QxProgramBlock code;
    };

    std::vector<QxStorage> variables;
    std::deque<QxConstant> constants;
    std::deque<std::string> texts;  // of constants
    QxProgramBlock main;
    std::vector<Initializer> once;         // default values that do not depend on shading data
    std::vector<Initializer> perPoint;     // the other default values
    std::unique_ptr<QxShadeops> shadeops;  // null if the shader calls none
    unsigned int depth = 0;                // maximum nesting of conditions in all blocks
    std::size_t instructions = 0;          // of the file
    std::vector<std::uint32_t> lightVariables[3];  // those for L, Cl and Ol
};
