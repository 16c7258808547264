#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"
#include "sqxview/SqxViewPainter.h"
#include "sqxview/SqxViewSource.h"

/// A shader as pages show it. While its source has errors, the picture shows its last version that
/// compiled.
struct SqxViewShader {
    bool isCompiled = false;                           // at least once, even with errors
    SqxViewCompiled compiled;                          // the last result
    std::shared_ptr<const QxShader> good;              // last shader without errors; null if none
    std::string listing;                               // of the parameters of `good`
    std::vector<std::optional<QxHostValue>> defaults;  // of the parameters of `good`
    std::string hint;                                  // why values were dropped, a line for each
    unsigned long version = 0;                         // counts compiles
};

/// Everything that pages show, except byte-code. The session has one state, and guards it by a
/// mutex.
struct SqxViewState {
    static constexpr std::size_t k_mostBytes =
        std::size_t{48} * 1024;  // largest change that a page may send

    unsigned long version = 1;  // counts changes
    SqxShadeOptions shade;      // the shaders with the set values, and the settings
    std::vector<SqxViewShader> shaders;
    SqxViewPainting painting;
    unsigned long pictureNumber = 0;  // counts pictures, including coarse ones; 0: none yet
    std::chrono::seconds timeLimit = {};
};

/// Returns the state, without the PNG of its picture, as JSON in the form that page/page.js and its
/// modules read.
[[nodiscard]] std::string SqxViewStateText(const SqxViewState& state);
