#pragma once

#include "support/SlcCollectable.h"

/// Base of the data that a pass attaches to a node, in the node's single annotation slot. Its class
/// depends on the node's class: expressions have a `SlcPossibleTypes`, for example.
class SlcAnnotation : public SlcCollectable {};
