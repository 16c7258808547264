#pragma once

#include <optional>
#include <string>

#include "support/SlcUnfinishedFile.h"

/// The files that a run makes for its next stage. Each is written in a private folder, and moved
/// into place at the end if it is kept. A fatal error also moves the preprocessed file into place.
struct SlcRunFiles {
    std::string m_shaderName;                         // empty until parsed
    std::string m_preprocessedText;                   // if the library preprocessed
    std::optional<SlcUnfinishedFile> m_preprocessed;  // if a command preprocessed, or it is kept
    std::optional<SlcUnfinishedFile> m_cc;  // the C++ file, if a shared object is built from it
};
