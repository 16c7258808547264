#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "sqxls/SqxLsWorkspace.h"

/// A document and the index of its compile, with conversions between their places.
struct SqxLsIndexed {
    std::shared_ptr<const SqxLsAnalysis> analysis;
    const QxSourceIndex* index = nullptr;
    std::shared_ptr<const SqxLsText> text;  // of the document
    int file = -1;                          // its number in the index

    /// Returns the text of a file of the index; null if the file can no longer be read.
    [[nodiscard]] const SqxLsText* TextOf(int number) const;
    /// Converts a place or a range to bytes in the text of its file.
    [[nodiscard]] static SqxLsSpan SpanOf(const SqxLsText& text, const QxSourcePlace& place);
    [[nodiscard]] static SqxLsSpan SpanOf(const SqxLsText& text, const QxSourceRange& range);
    /// Returns a `Location` of the protocol; null for a place outside all files.
    [[nodiscard]] SqxJson LocationOf(const SqxLsWorkspace& workspace,
                                     const QxSourcePlace& place) const;
};

/// Throws `SqxLsError` if the document has no index.
[[nodiscard]] SqxLsIndexed SqxLsIndexOf(SqxLsWorkspace& workspace, const SqxJson& params);

/// The name or included file at the position of a request.
struct SqxLsCursor : SqxLsIndexed {
    std::size_t offset = 0;
    SqxLsPlace place;
    const QxIndexedUse* use = nullptr;  // null if there is no name

    [[nodiscard]] const QxIndexedName* Name() const;
    /// Returns the included file whose name is at the position; null for none.
    [[nodiscard]] const QxIndexedInclude* Include() const;
};

[[nodiscard]] SqxLsCursor SqxLsCursorAt(SqxLsWorkspace& workspace, const SqxJson& params);

/// Returns the URI of a path, in the spelling of the editor if it has the file open.
[[nodiscard]] std::string SqxLsUriIn(const SqxLsWorkspace& workspace, const std::string& path);
