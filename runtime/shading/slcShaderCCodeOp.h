#pragma once

// The only header that generated shaders include. It includes all other headers that they need.
//
// Reading this header is most of the cost of compiling a small shader, so it includes only <new>
// and headers of the C library: <string>, <map>, <vector>, <algorithm> and <cmath> would be six
// times the rest.

// All required system headers, since declarations after the visibility pragma below are hidden.
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

// Only entry points are visible outside the shared object. So static variables of inline functions
// are local to the object, and do not keep it loaded when a host unloads it.
#define QX_SHADER_FUNC __attribute__((visibility("default")))
#pragma GCC visibility push(hidden)

#include "QxBuiltInNames.h"
#include "QxFrameSupport.h"
#include "QxSceneNames.h"

// The same digits as in byte-code and in folded expressions, so that PI is the same in every
// output.
static const float QX_PI = 3.141593e+00f;

// The current light, for shaders without loops over lights; in others a local variable of the same
// name hides it.
static const unsigned int lightCnt = ~0u;

// The current point, for blocks without a loop; hidden like `lightCnt`.
static const unsigned int polyCnt = 0;

// The types of arguments, for blocks with a variable argument list that do not define them. If the
// format is a constant that matches its arguments, it determines the types; otherwise the block
// defines a variable of this name.
static const char* const theTypes = nullptr;

// The rest redefines words of C++ and its library that generated code uses. It must be at the end,
// since code after it can no longer use these words.

// Indices of arrays, see QxElements.h: `int(x)` is an index, and uses the variables `i_visibles`
// and `v` of the calling code. This `v` is for functions without varying locals.
static const QxNoLocals v;
#define int(index) QxMakeIndex(QxNumber(index), qxArrays, i_visibles, v)
// Each function with indices starts with a declaration that ends in this call.
#define ShaderSupport()                                                                            \
    ShaderSupport();                                                                               \
    QxKnownArrays qxArrays
// Initializers allocate their locals by calloc. The size of these blocks must be known, too.
#define calloc(count, size) QxCalloc(count, size)
#define free(block) (qxArrays.Forget(), QxFree(block))
