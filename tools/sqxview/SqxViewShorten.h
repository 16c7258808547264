#pragma once

#include <cstddef>
#include <string>

/// Shortens a text of more than `most` bytes, between two characters of UTF-8, and appends a line
/// that says so.
void SqxViewShorten(std::string& text, std::size_t most);
