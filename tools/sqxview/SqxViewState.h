#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sqxshade/SqxShadeOptions.h"
#include "sqxview/SqxViewPainter.h"
#include "sqxview/SqxViewSource.h"

/// A shader as pages show it. While its source has errors, the picture shows the last shader that
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

/// Everything that pages show, except pictures and code. The session has one, guarded by its mutex.
struct SqxViewState {
    static constexpr std::size_t k_mostBytes =
        std::size_t{48} * 1024;  // largest change that a page may send

    unsigned long version = 1;  // counts changes
    SqxShadeOptions shade;      // the shaders with their values, and the settings
    std::vector<SqxViewShader> shaders;
    SqxViewPainting painting;
    unsigned long pictureNumber = 0;  // counts pictures, including coarse ones; 0: none yet
    std::chrono::seconds timeLimit = {};
};

/// Returns the state as JSON, in the form that page/page.js and its modules read.
[[nodiscard]] std::string SqxViewStateText(const SqxViewState& state);
