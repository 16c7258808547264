#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "QxShading.h"

struct SqxShader;

/// A parameter of a shader.
struct QxShaderParameter {
    std::string name;
    QxValueType type = QxValueType::Float;
    bool varying = false;
    std::size_t length = 1;  // array elements; 1 if not an array
    bool output = false;
    /// The space that the default value is given in; empty for none.
    std::string space;
    bool needsObjectSpace = false;  // to compute the default value
};

/// The interface of a compiled shader: everything that a program must know to run it, for any kind
/// of file.
struct QxShaderInfo {
    QxShaderInterface::QxType type = QxShaderInterface::e_typeSurface;
    /// In source order, which is also the order of the variables of an instance.
    std::vector<QxShaderParameter> parameters;
    /// Names of the predefined variables that the shader reads or writes, such as "dPdu".
    std::vector<std::string> predefined;
    /// Names of its coordinate spaces, by the numbers that `QxShadingContext` uses.
    std::vector<std::string> spaces;
    /// File names of the shadeop libraries that it calls into.
    std::vector<std::string> shadeopLibraries;
    bool tracesRays = false;
    bool modifiesP = false;
    bool isAmbient = false;  // a light without `illuminate` and `solar`

    /// Sets the names, types, details and lengths of the variables, one per parameter; they have no
    /// values yet. The object must outlive them.
    void Declare(std::vector<QxVar>& variables) const;
};

/// Returns the interface of a shader in byte-code, whose main block must have been read.
[[nodiscard]] QxShaderInfo QxInfoOf(const SqxShader& shader);
