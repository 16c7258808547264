#pragma once

// The one header that generated shaders include. It includes the rest of this folder.
//
// Reading it is most of what a small shader costs the C++ compiler, so it keeps to headers of the
// C library: <string>, <map>, <vector>, <algorithm> and <cmath> would be six times all the rest.

// All system headers that it needs, since what is declared after the pragma is hidden.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <new>

// The frame of a generated file declares the same names for every shader, needed or not.
#pragma GCC diagnostic ignored "-Wunused-variable"
#pragma GCC diagnostic ignored "-Wunused-but-set-variable"
#pragma GCC diagnostic ignored "-Wunused-label"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#ifdef __clang__
#pragma GCC diagnostic ignored "-Wextern-c-compat"  // a shader without locals of a kind
#pragma GCC diagnostic ignored "-Wkeyword-macro"    // `int(index)`, see below
#pragma GCC diagnostic ignored "-Wpass-failed"      // a marked loop that is none of vectors
#endif

// Only entry points leave the shared object. What inline functions keep in static variables is
// then the object's own, and does not tie it to the process when a host unloads it.
#define QX_SHADER_FUNC __attribute__((visibility("default")))
#pragma GCC visibility push(hidden)

#include "QxBuiltInNames.h"
#include "QxFrameSupport.h"
#include "QxSceneNames.h"

// As byte-code and folded expressions write it, so that a shader has one PI however it was compiled.
static const float QX_PI = 3.141593e+00f;

// The light that a loop has come to, where a shader has no such loops: a variable of this name hides
// it elsewhere.
static const unsigned int lightCnt = ~0u;

// The point of a loop, where a block has no loop: as above.
static const unsigned int polyCnt = 0;

// The types of arguments that a block with a variable argument list does not state. Where the format
// is a constant that fits them, it gives the types; elsewhere the block has a variable of this
// name.
static const char* const theTypes = nullptr;

// The rest gives a meaning to what generated code writes in words of C++ and of its library. It stands at the
// end, since text after it could not use these words any more.

// Indices of arrays, see QxElements.h: `int(x)` is one, and needs what its place calls `i_visibles` and
// `v`. Functions without varying locals see this one.
static const QxNoLocals v;
#define int(index) QxMakeIndex(QxNumber(index), qxArrays, i_visibles, v)
// Each function with indices begins with a declaration that ends in this call.
#define ShaderSupport() ShaderSupport(); QxKnownArrays qxArrays
// Initializers write these out. Their blocks too must know where they end.
#define calloc(count, size) QxCalloc(count, size)
#define free(block) (qxArrays.Forget(), QxFree(block))
