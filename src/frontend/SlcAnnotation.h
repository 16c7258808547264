#pragma once

#include "support/SlcCollectable.h"

/// Common base of what a pass attaches to a node, in the node's one annotation slot. Its class
/// follows from the node's: an expression has a `SlcPossibleTypes`, for example.
class SlcAnnotation : public SlcCollectable {};
