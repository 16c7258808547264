#pragma once

class SlcDetailNode;
class SlcShaderTypeNode;

/// The place of a call, on which its detail depends, and that of the body that is evaluated for it.
struct SlcCallPlace {
    SlcShaderTypeNode* shaderType = nullptr;
    bool inShader = false;  // code here is reachable, and so are the functions that it calls
    bool inLightStatement = false;    // or in a function called from one
    SlcDetailNode* wanted = nullptr;  // detail that the context requests; null if none
    int level = 0;                    // number of enclosing calls
};
