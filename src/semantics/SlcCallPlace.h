#pragma once

class SlcDetailNode;
class SlcShaderTypeNode;

/// The place of a statement, or of a function body that is evaluated for a call. The details of the
/// calls in the statement or body, and the reports about them, depend on its place.
struct SlcCallPlace {
    SlcShaderTypeNode* shaderType = nullptr;
    bool inShader = false;  // in the shader's code, or in a body evaluated for a call from there
    // In `illuminance`, `illuminate` or `solar`, or in a body evaluated for a statement in one.
    bool inLightStatement = false;
    SlcDetailNode* wanted = nullptr;  // detail that the context requests; null if none
    int level = 0;                    // number of calls whose bodies are being evaluated
};
