#pragma once

#include "support/SlcCollectable.h"

/// Base of the data that a pass attaches to a node, in the node's single annotation slot, or to the
/// symbol table entry of a function. The class of an annotation depends on that of the node: an
/// expression has a `SlcPossibleTypes`, for example.
class SlcAnnotation : public SlcCollectable {};
