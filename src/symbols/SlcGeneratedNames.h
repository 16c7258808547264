#pragma once

/// Names by which generated code reaches what the run time hands it. Predefined variables stand
/// in operands under these texts, and tests for one compare the text.
namespace SlcGeneratedNames {

inline constexpr const char* k_hiddenPrefix = "i_hiddens";
inline constexpr const char* k_contextVarName = "i_context";
inline constexpr const char* k_pointType = "QxVector3";
inline constexpr const char* k_lightPrefix = "i_lights";
inline constexpr const char* k_lightCounter = "lightCnt";
inline constexpr const char* k_pi = "QX_PI";

// The accessors of the predefined variables that code generation asks for by name.
inline constexpr const char* k_P = "i_hiddens.GetP()";
inline constexpr const char* k_du = "i_hiddens.GetDu()";
inline constexpr const char* k_dv = "i_hiddens.GetDv()";

}  // namespace SlcGeneratedNames
