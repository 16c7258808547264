#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "sqxls/SqxLsWorkspace.h"

/// A document and the index of the compile that has read it, with conversions between their places.
struct SqxLsIndexed {
    std::shared_ptr<const SqxLsAnalysis> analysis;
    const QxSourceIndex* index = nullptr;
    std::shared_ptr<const SqxLsText> text;  // of the document
    int file = -1;                          // number of the document in the index; -1 if not in it

    /// Returns the text of a file by its number in the index; null if the number is negative or the
    /// file could not be read.
    [[nodiscard]] const SqxLsText* TextOf(int number) const;
    /// Converts a place or a range to a range of bytes in the text of its file.
    [[nodiscard]] static SqxLsSpan SpanOf(const SqxLsText& text, const QxSourcePlace& place);
    [[nodiscard]] static SqxLsSpan SpanOf(const SqxLsText& text, const QxSourceRange& range);
    /// Returns a `Location` of the protocol; null if `TextOf` has no text for the place.
    [[nodiscard]] SqxJson LocationOf(const SqxLsWorkspace& workspace,
                                     const QxSourcePlace& place) const;
};

/// Returns the document that a request names, with its index. Throws `SqxLsError` if the request
/// names no open document, or if the document has no index.
[[nodiscard]] SqxLsIndexed SqxLsIndexOf(SqxLsWorkspace& workspace, const SqxJson& params);

/// The name or included file at the position of a request.
struct SqxLsCursor : SqxLsIndexed {
    std::size_t offset = 0;
    SqxLsPlace place;
    const QxIndexedUse* use = nullptr;  // null if there is no name

    /// Returns the name that is used or defined at the position; null if there is none.
    [[nodiscard]] const QxIndexedName* Name() const;
    /// Returns the include directive whose file name is at the position; null if there is none, or
    /// if its file was not found.
    [[nodiscard]] const QxIndexedInclude* Include() const;
};

/// Returns the cursor at the position of a request. Throws `SqxLsError` like `SqxLsIndexOf`, and if
/// the position is invalid.
[[nodiscard]] SqxLsCursor SqxLsCursorAt(SqxLsWorkspace& workspace, const SqxJson& params);

/// Returns the URI of a path; if the file is open, as the editor writes it.
[[nodiscard]] std::string SqxLsUriIn(const SqxLsWorkspace& workspace, const std::string& path);
