#pragma once

// Everything that a program needs to run shaders, in byte-code or as shared objects:
//
//     QxHostScene scene;
//     scene.AddPointLight({0, 2, -2}, {1, 1, 1});
//     QxShaderInstance plastic(QxShader::Open("plastic.sqx"), scene.Spaces());
//     plastic.Set("Kd", 0.8);
//     QxHostGrid grid(64, 64);
//     plastic.Run(grid, scene);
//     std::span<QxRGBColor> colors = grid.Values<QxRGBColor>("Ci");

#include "QxHostError.h"
#include "host/QxHostGrid.h"
#include "host/QxHostScene.h"
#include "host/QxHostSpaces.h"
#include "host/QxHostValue.h"
#include "host/QxParameterSet.h"
#include "host/QxShader.h"
#include "host/QxShaderInstance.h"
