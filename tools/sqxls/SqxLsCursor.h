#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "compiler/QxSourceIndex.h"
#include "sqxls/SqxLsWorkspace.h"

/// A document with the index of its compile, and the way from the one's places to the other's.
struct SqxLsIndexed {
    std::shared_ptr<const SqxLsAnalysis> analysis;
    const QxSourceIndex* index = nullptr;
    std::shared_ptr<const SqxLsText> text;  // of the document
    int file = -1;                          // its number in the index

    /// The file that the number names; null if it cannot be read any more.
    [[nodiscard]] const SqxLsText* TextOf(int number) const;
    /// Bytes of a place or of a range in the text of its file.
    [[nodiscard]] static SqxLsSpan SpanOf(const SqxLsText& text, const QxSourcePlace& place);
    [[nodiscard]] static SqxLsSpan SpanOf(const SqxLsText& text, const QxSourceRange& range);
    /// A `Location` of the protocol; null for a place in no file.
    [[nodiscard]] SqxJson LocationOf(const SqxLsWorkspace& workspace,
                                     const QxSourcePlace& place) const;
};

/// Throws `SqxLsError` if the document has no index.
[[nodiscard]] SqxLsIndexed SqxLsIndexOf(SqxLsWorkspace& workspace, const SqxJson& params);

/// What is at the position of a request.
struct SqxLsCursor : SqxLsIndexed {
    std::size_t offset = 0;
    SqxLsPlace place;
    const QxIndexedUse* use = nullptr;  // null if no name is there

    [[nodiscard]] const QxIndexedName* Name() const;
    /// The included file whose name is there; null for none.
    [[nodiscard]] const QxIndexedInclude* Include() const;
};

[[nodiscard]] SqxLsCursor SqxLsCursorAt(SqxLsWorkspace& workspace, const SqxJson& params);

/// The URI of a path, in the words of the editor if it has the file open.
[[nodiscard]] std::string SqxLsUriIn(const SqxLsWorkspace& workspace, const std::string& path);
