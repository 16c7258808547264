#pragma once

#include "symbols/SlcGeneratedNames.h"

/// Names that appear in generated C++, so that definitions and uses agree. The run time's headers
/// and renderers depend on many of them, so they must not be renamed.
struct SlcGeneratedText {
    static constexpr const char* sm_slcHeaderFile = "slcShaderCCodeOp.h";
    static constexpr const char* sm_slcPrefixFunc = "extern \"C\" void QX_SHADER_FUNC ";
    static constexpr const char* sm_slcPrefixFuncInt = "extern \"C\" int QX_SHADER_FUNC ";

    // entry points, and the static function QxInitializeAtShadeTime
    static constexpr const char* sm_slcVersionFuncName = "QxInterfaceVersion";
    static constexpr const char* sm_slcInterrogateFuncName = "QxInterrogate";
    static constexpr const char* sm_slcEvaluateFuncName = "QxEvaluate";
    static constexpr const char* sm_slcInitializeFuncName = "QxInitialize";
    static constexpr const char* sm_slcInitializeAtShadeTimeFuncName = "QxInitializeAtShadeTime";
    static constexpr const char* sm_slcDestroyFuncName = "QxDestroy";
    static constexpr const char* sm_registerFuncName = "QxRegister";
    static constexpr const char* sm_useRayTracingFuncName = "QxUseRayTracing";
    static constexpr const char* sm_slcModifyPointFuncName = "QxModifyPoint";

    // types outside of bodies
    static constexpr const char* sm_slcShaderTypeName = "QxShaderInterface::QxType";
    static constexpr const char* sm_slcVarsName = "QxVar";
    static constexpr const char* sm_slcTypePointSpaceList = "const QxFrame3D";
    static constexpr const char* sm_slcSearchPathTypeName = "const QxSearchPath";
    static constexpr const char* sm_slcSpaceRegistryTypeName = "QxSpaceRegistry";
    static constexpr const char* sm_localUniformStructName = "QxLocalUniform";
    static constexpr const char* sm_localVaryingStructName = "QxLocalVarying";

    // variables outside of bodies
    static constexpr const char* sm_shaderParamsDescrName = "s_shaderParamsDescr";
    static constexpr const char* sm_slcDSOHandlesVarName = "s_theDSOHandles";
    static constexpr const char* sm_slcDSOInfoVarName = "s_theDSOInfo";
    static constexpr const char* sm_shadeopNeedsName = "QxShadeopNeeds";
    static constexpr const char* sm_shaderFactsName = "QxShaderFacts";
    static constexpr const char* sm_slcInitDSOCounter = "nbCallInitDSO";
    static constexpr const char* sm_slcCleanupDSOCounter = "nbCallCleaupDSO";

    // types of values
    static constexpr const char* sm_slcFloatType = "float";
    static constexpr const char* sm_slcColorType = "QxRGBColor";
    static constexpr const char* sm_slcPointType = SlcGeneratedNames::k_pointType;
    static constexpr const char* sm_slcStringType = "const char *";
    static constexpr const char* sm_slcBoolType = "QxStopAndBool";
    static constexpr const char* sm_slcIntType = "unsigned int";
    static constexpr const char* sm_slcMatrixType = "QxMatrix44";

    // names that a body uses
    static constexpr const char* sm_hiddenPrefix = SlcGeneratedNames::k_hiddenPrefix;
    static constexpr const char* sm_lightPrefix = SlcGeneratedNames::k_lightPrefix;
    static constexpr const char* sm_polygonCounter = "polyCnt";
    static constexpr const char* sm_lightCounter = SlcGeneratedNames::k_lightCounter;
    static constexpr const char* sm_visibleIndexPrefix = "INDEX_";
    static constexpr const char* sm_contextVarName = SlcGeneratedNames::k_contextVarName;
    static constexpr const char* sm_flagEvalLightForP = "mustEvalLights";
};
