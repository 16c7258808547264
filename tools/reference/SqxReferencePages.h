#pragma once

#include <string>

/// Return tables for documents, as Markdown, generated from the compiler's tables. The first two
/// throw `std::runtime_error` if a built-in or a predefined variable has no meaning, or if there is
/// a meaning without a built-in.
[[nodiscard]] std::string SqxBuiltInTable();
[[nodiscard]] std::string SqxPredefinedTable();
[[nodiscard]] std::string SqxInstructionTable();
[[nodiscard]] std::string SqxCompilerOptionTable();

/// Returns `page` with its tables generated again. A table is between the lines `<!-- table: NAME
/// -->` and `<!-- end of table -->`, where NAME is `built-ins`, `predefined`, `instructions`,
/// `plain-macros`, `form-macros` or `options`. Throws `std::runtime_error` for an unknown name, a
/// table without an end, or a missing meaning.
[[nodiscard]] std::string SqxRefreshPage(const std::string& page);
