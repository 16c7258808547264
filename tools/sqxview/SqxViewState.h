#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"
#include "sqxview/SqxViewPainter.h"
#include "sqxview/SqxViewSource.h"

/// A shader as pages show it. While its source is at fault, the last one that compiled stays in the
/// picture.
struct SqxViewShader {
    bool isCompiled = false;                           // once
    SqxViewCompiled compiled;                          // what became of its source the last time
    std::shared_ptr<const QxShader> good;              // the last one that compiled
    std::string listing;                               // of that one's parameters
    std::vector<std::optional<QxHostValue>> defaults;  // of that one's parameters
    std::string hint;                                  // values that had to go, one a line
    unsigned long version = 0;                         // counts compiles
};

/// All that pages show but for pictures and code. The session has one, under its mutex.
struct SqxViewState {
    static constexpr std::size_t k_mostBytes =
        std::size_t{48} * 1024;  // of a change that a page sends

    unsigned long version = 1;  // counts changes
    SqxShadeOptions shade;      // the shaders with the values that are set, and the settings
    std::vector<SqxViewShader> shaders;
    SqxViewPainting painting;
    unsigned long pictureNumber = 0;  // counts pictures, coarse ones too; 0: none yet
    std::chrono::seconds timeLimit = {};
};

/// As JSON, in the form that page/page.js and the modules beside it read.
[[nodiscard]] std::string SqxViewStateText(const SqxViewState& state);
