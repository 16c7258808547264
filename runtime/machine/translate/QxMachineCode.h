#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "kernels/QxCode.h"
#include "machine/translate/QxShadeops.h"
#include "sqx/SqxShader.h"

/// What a variable of a program is, for the memory of a run: whose memory its values stand in, and
/// how much that is. One for each number by which code names a variable.
struct QxStorage {
    enum class Kind : unsigned char {
        Predefined,  // number: by row of the table of predefined variables
        Parameter,   // number: by position
        Local,
        Borrowed,   // like a local; its texts are others' copies
        Constant,   // number: by position among the constants
        Alias,      // of an element of an array that all points refer to
        Reference,  // of an element for each point
        Nowhere,    // takes what the shader does not want
        Ng,
    };
    Kind kind = Kind::Local;
    QxStored stored = QxStored::Number;
    bool varying = false;
    std::uint32_t size = 1;
    std::uint32_t number = 0;
};

/// A value that the file gives, in each way in which it may be wanted: a number as the first of
/// `numbers`, or three equal ones. Which one counts is told by the storage that names it.
struct QxConstant {
    float numbers[3] = {0, 0, 0};
    QxStopAndBool flag = false;
    const char* text = "";
};

/// A byte-code file, made ready to run. Variables are those of the file in their order, then some
/// that the translation added.
///
/// `QxTranslator` fills it in and nobody changes it then, so that runs in several threads share it.
/// Runs hold addresses of constants: these stand in deques, which never move their elements.
struct QxMachineCode {
    /// Computes the default value of a parameter, which `result` holds when `code` has run.
    struct Initializer {
        std::size_t parameter = 0;
        std::uint32_t result = 0;  // a variable
        QxProgramBlock code;
    };

    std::vector<QxStorage> variables;
    std::deque<QxConstant> constants;
    std::deque<std::string> texts;  // of constants
    QxProgramBlock main;
    std::vector<Initializer> once;         // default values that need no shading data
    std::vector<Initializer> perPoint;     // the other ones
    std::unique_ptr<QxShadeops> shadeops;  // null if it calls none
    bool isLight = false;
    unsigned int depth = 0;                        // of nested conditions, of all blocks
    std::size_t instructions = 0;                  // of the file
    std::vector<std::uint32_t> lightVariables[3];  // L, Cl and Ol
};
