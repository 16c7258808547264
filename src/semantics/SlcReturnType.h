#pragma once

class SlcIdentNode;

/// The name of the variable that tells a body the return type of its function; no source text
/// can spell it.
[[nodiscard]] SlcIdentNode* SlcReturnTypeIdent();
