#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "preprocessor/SlcPreprocessedText.h"
#include "support/SlcDiagnostics.h"

/// Maps offsets in a preprocessed text to columns in the files.
class SlcTextColumns {
public:
    /// The text must outlive the object.
    SlcTextColumns(std::string_view text, std::vector<SlcColumnChange> columns)
        : m_text(text),
          m_columns(std::move(columns))
    {
    }

    /// Returns the column of a place, from 1; for text from a macro, that of the macro's use.
    /// Linear in the part of the line before the place.
    [[nodiscard]] int ColumnOf(std::size_t offset) const;
    /// Returns the columns of the part of a range on its first line; zeros if the range is empty or
    /// the number of that line in its file is not `line`. The first call is linear in the text,
    /// later ones are linear in the line.
    [[nodiscard]] SlcColumns ColumnsOf(std::size_t begin, std::size_t end, int line);

private:
    struct Line {
        std::size_t offset = 0;
        int number = 0;  // in its file
    };
    /// Fills `m_lines`, following the line markers.
    void FindLines();

    std::string_view m_text;
    std::vector<SlcColumnChange> m_columns;
    std::vector<Line> m_lines;
};
