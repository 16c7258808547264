#pragma once

#include <string>

/// Tables for documents, as Markdown, made of the compiler's own tables.
[[nodiscard]] std::string SqxBuiltInTable();
[[nodiscard]] std::string SqxPredefinedTable();
[[nodiscard]] std::string SqxInstructionTable();
[[nodiscard]] std::string SqxCompilerOptionTable();

/// `page` with its tables written again. A table is between the lines `<!-- table: NAME -->` and
/// `<!-- end of table -->`, where NAME is `built-ins`, `predefined`, `instructions` or `options`.
/// Throws `std::runtime_error` for an unknown name, or a table without an end.
[[nodiscard]] std::string SqxRefreshPage(const std::string& page);
