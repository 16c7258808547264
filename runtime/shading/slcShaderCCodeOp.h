#pragma once

// The only header that generated shaders include directly. It includes all others that they need.
//
// Reading this header is most of the cost of compiling a small shader, so of the system's headers
// it includes only <new> and those of the C library: the text of <string>, <map>, <vector>,
// <algorithm> and <cmath> would be six times as long as all that is read now.

// All required system headers are included here: after the visibility pragma below, their
// declarations would be hidden.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <new>

// The frame of a generated file declares the same names for every shader, used or not.
#pragma GCC diagnostic ignored "-Wunused-variable"
#pragma GCC diagnostic ignored "-Wunused-but-set-variable"
#pragma GCC diagnostic ignored "-Wunused-label"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#ifdef __clang__
#pragma GCC diagnostic ignored "-Wextern-c-compat"  // a shader may have no locals of some kind
#pragma GCC diagnostic ignored "-Wkeyword-macro"    // `int(index)`, see below
#pragma GCC diagnostic ignored "-Wpass-failed"      // a marked loop cannot be vectorized
#endif

// Only functions and data that are marked as visible can be seen outside the shared object: the
// entry points, and a few names from which a host learns facts about the shader. So static
// variables of inline functions are local to the object, and do not keep it loaded when a host
// unloads it.
#define QX_SHADER_FUNC __attribute__((visibility("default")))
#pragma GCC visibility push(hidden)

#include "QxBuiltInNames.h"
#include "QxFrameSupport.h"
#include "QxSceneNames.h"

// The same digits as in byte-code and in folded expressions, so that PI is the same in every
// output.
static const float QX_PI = 3.141593e+00f;

// The current light, for functions that have none, such as those of light shaders; in others a
// local variable of the same name hides it.
static const unsigned int lightCnt = ~0u;

// The current point, for initializers without a grid; hidden like `lightCnt`.
static const unsigned int polyCnt = 0;

// The types of the arguments of a format, see QxSceneNames.h. If the compiler knows that a constant
// format matches its arguments, the format determines the types; otherwise the generated block
// around the call defines a variable of this name, which hides this one.
static const char* const theTypes = nullptr;

// The rest redefines `ShaderSupport`, and words of C++ and its library that generated code uses. It
// must be at the end, since these words have another meaning in the code after it.

// Indices of arrays, see QxElements.h: `int(x)` is an index, and uses the variables `qxArrays`,
// `i_visibles` and `v` of the calling code. This `v` is for initializers without a grid, which
// declare none.
static const QxNoLocals v;
#define int(index) QxMakeIndex(QxNumber(index), qxArrays, i_visibles, v)
// Each function that uses `int(index)` starts with a declaration that ends in `ShaderSupport()`, so
// this macro can add the declaration of `qxArrays` after it.
#define ShaderSupport()                                                                            \
    ShaderSupport();                                                                               \
    QxKnownArrays qxArrays
// Initializers with a grid allocate their varying locals by calloc. `QxCalloc` also stores the size
// of the block before it, where the look-up of an array's length reads it.
#define calloc(count, size) QxCalloc(count, size)
#define free(block) (qxArrays.Forget(), QxFree(block))
