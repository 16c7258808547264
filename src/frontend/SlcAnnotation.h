#pragma once

#include "support/SlcCollectable.h"

/// Common base of what a pass attaches to a node, in the node's one annotation slot.
class SlcAnnotation : public SlcCollectable {};
