#pragma once

#include <cstddef>
#include <string>

/// If the text has more than `most` bytes, cuts it to at most `most`, between two characters of
/// UTF-8, and appends a line that says so. A shorter text stays unchanged.
void SqxViewShorten(std::string& text, std::size_t most);
