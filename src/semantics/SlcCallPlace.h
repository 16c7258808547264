#pragma once

class SlcDetailNode;
class SlcShaderTypeNode;

/// The place of a call, on which the rules of its detail depend; also the place of the body that is
/// evaluated for it.
struct SlcCallPlace {
    SlcShaderTypeNode* shaderType = nullptr;
    bool inShader = false;            // what runs here is reached, and with it what it calls
    bool inLightStatement = false;    // or in a call from inside of one
    SlcDetailNode* wanted = nullptr;  // by the context; null where it wants none
    int level = 0;                    // of calls around it
};
