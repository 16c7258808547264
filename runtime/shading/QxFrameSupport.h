#pragma once

#include <cstdlib>
#include <dlfcn.h>

#include "QxElements.h"
#include "QxShaderSupport.h"
#include "QxShading.h"
#include "QxText.h"

// Functions and tables for the frame of a generated file, which is its code around the instructions
// of the shader: memory, descriptions, spaces, predefined variables and shadeop libraries. The host
// calls the entry points of the frame in this order; QxUseRayTracing and QxModifyPoint, which
// return constants, at any time:
//
//     QxRegister, QxInterfaceVersion, QxInterrogate   once; describe the shader
//     QxInitialize                                    for each instance, in any number of threads
//     QxEvaluate                                      for each grid, in any number of threads
//     QxDestroy                                       once; frees what the first three allocated

/// Allocates zeroed memory, since locals of a shader start as zero. Throws what `new` throws if
/// there is no memory. A block of size 0 is valid too; the caller frees each block by `QxFree`.
inline void* QxCalloc(std::size_t count, std::size_t size)
{
    const std::size_t bytes = count * size;
    char* const block = static_cast<char*>(::operator new(bytes + k_qxBlockHead));
    std::memcpy(block, &bytes, sizeof bytes);
    std::memset(block + k_qxBlockHead, 0, bytes);
    return block + k_qxBlockHead;
}

inline void QxFree(void* block)
{
    if (block)
        ::operator delete(static_cast<char*>(block) - k_qxBlockHead);
}

inline void QxFreeString(char* text)
{
    std::free(text);
}
#define FREE_STRING(text) QxFreeString(text)

/// Creates one empty description for each parameter. The frame owns this array and those of
/// `QxCreateVarsInit` and `QxCreateSpaceList`. Each is freed by the function below the one that
/// creates it, which also accepts null.
inline QxShaderToken* QxCreateShaderParamsDescr(int count)
{
    return new QxShaderToken[static_cast<std::size_t>(count)];
}

inline void QxFreeShaderParamsDescr(QxShaderToken* description)
{
    delete[] description;
}

inline QxToken* QxFindToken(QxTokenRegistry* registry, const char* name)
{
    return registry->Find(name);
}

/// Creates one variable for each parameter, with memory for one point. Also stores the number of
/// parameters, which accesses to arrays need.
inline QxVar* QxCreateVarsInit(const QxShaderToken* description, int count)
{
    s_qxParameters = static_cast<std::size_t>(count);
    QxVar* variables = new QxVar[s_qxParameters];
    for (int i = 0; i < count; ++i)
        variables[i].Declare(description[i]);
    return variables;
}

inline void QxFreeVarsInit(QxVar* variables)
{
    delete[] variables;
}

inline const QxFrame3D** QxCreateSpaceList(int count)
{
    return new const QxFrame3D*[static_cast<std::size_t>(count)];
}

inline void QxDeleteSpaceList(const QxFrame3D** list)
{
    delete[] list;
}

/// Returns the coordinate system of a name, which may be defined later. The pointer stays valid as
/// long as the registry exists.
inline const QxFrame3D* FindSpace(QxSpaceRegistry* registry, const char* name)
{
    return registry->Reserve(name);
}

/// Stores a default value at each point. A point or matrix is already in the current space, a color
/// in rgb; `space` is the space in which the source specifies the value, "" for none.
inline void QxInitVarValue(QxVar& variable, const char* space, QxTokenInfo::QxClass, int,
                           const void* value)
{
    variable.SetDefaultSpace(space);
    variable.Store(value);
}

inline void QxReportBadArrayIndex(QxShaderSupport* support, const char* file, int line,
                                  const char* array, float index)
{
    support->Report(QxBadArrayIndexText(file, line, array, index).Characters());
}

// The position in the generated file means nothing to the author of the shader, so it is dropped.
#define ReportBadArrayIndexError(cppFile, cppLine, file, line, array, index)                       \
    QxReportBadArrayIndex(shaderSupport, file, line, array, QxNumber(index))

/// The index of each predefined variable in `s_qxPredefinedTokens`.
enum QxPredefined {
    QxPredefinedCs,
    QxPredefinedOs,
    QxPredefinedP,
    QxPredefinedDPdu,
    QxPredefinedDPdv,
    QxPredefinedN,
    QxPredefinedNg,
    QxPredefinedU,
    QxPredefinedV,
    QxPredefinedDu,
    QxPredefinedDv,
    QxPredefinedS,
    QxPredefinedT,
    QxPredefinedL,
    QxPredefinedCl,
    QxPredefinedOl,
    QxPredefinedE,
    QxPredefinedI,
    QxPredefinedNcomps,
    QxPredefinedTime,
    QxPredefinedCi,
    QxPredefinedOi,
    QxPredefinedPs,
    QxPredefinedAlpha,
};

static QxToken s_qxPredefinedTokens[] = {
    {"Cs"}, {"Os"}, {"P"},      {"dPdu"}, {"dPdv"}, {"N"},  {"Ng"}, {"u"},
    {"v"},  {"du"}, {"dv"},     {"s"},    {"t"},    {"L"},  {"Cl"}, {"Ol"},
    {"E"},  {"I"},  {"ncomps"}, {"time"}, {"Ci"},   {"Oi"}, {"Ps"}, {"alpha"},
};

#define RI_CS (&s_qxPredefinedTokens[QxPredefinedCs])
#define RI_OS (&s_qxPredefinedTokens[QxPredefinedOs])
#define RI_P (&s_qxPredefinedTokens[QxPredefinedP])
#define RI_DPDU (&s_qxPredefinedTokens[QxPredefinedDPdu])
#define RI_DPDV (&s_qxPredefinedTokens[QxPredefinedDPdv])
#define RI_N (&s_qxPredefinedTokens[QxPredefinedN])
#define RI_NG (&s_qxPredefinedTokens[QxPredefinedNg])
#define RI_U (&s_qxPredefinedTokens[QxPredefinedU])
#define RI_V (&s_qxPredefinedTokens[QxPredefinedV])
#define RI_DU (&s_qxPredefinedTokens[QxPredefinedDu])
#define RI_DV (&s_qxPredefinedTokens[QxPredefinedDv])
#define RI_S (&s_qxPredefinedTokens[QxPredefinedS])
#define RI_T (&s_qxPredefinedTokens[QxPredefinedT])
#define RI_L (&s_qxPredefinedTokens[QxPredefinedL])
#define RI_CL (&s_qxPredefinedTokens[QxPredefinedCl])
#define RI_OL (&s_qxPredefinedTokens[QxPredefinedOl])
#define RI_E (&s_qxPredefinedTokens[QxPredefinedE])
#define RI_I (&s_qxPredefinedTokens[QxPredefinedI])
#define RI_NCOMPS (&s_qxPredefinedTokens[QxPredefinedNcomps])
#define RI_TIME (&s_qxPredefinedTokens[QxPredefinedTime])
#define RI_CI (&s_qxPredefinedTokens[QxPredefinedCi])
#define RI_OI (&s_qxPredefinedTokens[QxPredefinedOi])
#define RI_PS (&s_qxPredefinedTokens[QxPredefinedPs])
#define RI_ALPHA (&s_qxPredefinedTokens[QxPredefinedAlpha])

// Shadeop libraries. A missing library or function is a null handle or pointer.

using QxDSO = void*;

/// The functions of one shadeop, and the data that its init function has returned. A missing
/// function is null, and so is the data if there is no init function.
struct SlcDSOInfo {
    using InitFunction = void* (*)();
    using MethodFunction = void (*)(void* data, int argc, void** argv);
    using CleanupFunction = void (*)(void* data);

    InitFunction m_initFunc;
    MethodFunction m_methodFunc;
    CleanupFunction m_cleanupFunc;
    void* m_initdata;
};

/// Returns the path of the library in the first folder that contains it, valid until the next call;
/// null if no folder does.
inline const char* FindDSO(const QxSearchPath* searchPath, const char* file)
{
    return searchPath->Find(file);
}

inline QxDSO QxOpenDSO(const char* path, int mode)
{
    return path ? dlopen(path, mode) : nullptr;
}

inline void* QxGetDSOSymbol(QxDSO library, const char* name)
{
    return library ? dlsym(library, name) : nullptr;
}

inline void QxCloseDSO(QxDSO library)
{
    if (library)
        dlclose(library);
}
