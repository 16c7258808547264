#pragma once

class SlcDetailNode;
class SlcShaderTypeNode;

/// The place of a statement, or of a body that is evaluated for a call. The details of calls there
/// depend on it.
struct SlcCallPlace {
    SlcShaderTypeNode* shaderType = nullptr;
    bool inShader = false;  // in the shader's code, or in a body evaluated for a call from there
    bool inLightStatement = false;    // or in a body evaluated for a call from a light statement
    SlcDetailNode* wanted = nullptr;  // detail that the context requests; null if none
    int level = 0;                    // number of enclosing calls
};
