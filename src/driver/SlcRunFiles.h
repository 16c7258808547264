#pragma once

#include <optional>

#include "driver/SlcCommandLine.h"
#include "support/SlcUnfinishedFile.h"

/// The files that one run makes for its next stage. Each has a name that no other run has, and is
/// moved into its place at the end if it is to be kept; after a fatal error the preprocessed file
/// is, too.
struct SlcRunFiles {
    explicit SlcRunFiles(const SlcCommandLine& line)
        : m_preprocessed(line.m_preprocessedFile, SlcUnfinishedFile::OnExit::MoveIntoPlace)
    {
    }

    SlcUnfinishedFile m_preprocessed;
    std::optional<SlcUnfinishedFile> m_cc;  // the C++ file, if a shared object is built from it
};
