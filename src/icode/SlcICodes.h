#pragma once

// Includes all instruction classes, for passes that handle most of them.

#include "icode/SlcArithICode.h"
#include "icode/SlcArrayICode.h"
#include "icode/SlcAssignICode.h"
#include "icode/SlcBlockICode.h"
#include "icode/SlcBoolICode.h"
#include "icode/SlcCallICode.h"
#include "icode/SlcConstructICode.h"
#include "icode/SlcJumpICode.h"
#include "icode/SlcLightICode.h"
#include "icode/SlcTextureICode.h"
#include "icode/SlcTransformICode.h"
