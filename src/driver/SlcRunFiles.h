#pragma once

#include <optional>
#include <string>

#include "support/SlcUnfinishedFile.h"

/// The files that a run makes for its next stage. Each file has a name that no other run has, and
/// is moved into its place at the end if it is to be kept; after a fatal error the preprocessed
/// file is, too.
struct SlcRunFiles {
    std::string m_shaderName;                         // once it is parsed
    std::string m_preprocessedText;                   // if the library made it
    std::optional<SlcUnfinishedFile> m_preprocessed;  // if a command made it, or it is to be kept
    std::optional<SlcUnfinishedFile> m_cc;  // the C++ file, if a shared object is built from it
};
