#pragma once

// Includes all node classes, for the passes that handle most of them.

#include "frontend/SlcAssignNodes.h"
#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcCallNodes.h"
#include "frontend/SlcDefinitionNodes.h"
#include "frontend/SlcDetailNode.h"
#include "frontend/SlcExprNodes.h"
#include "frontend/SlcLValueNodes.h"
#include "frontend/SlcLexicalNode.h"
#include "frontend/SlcLoopNodes.h"
#include "frontend/SlcRelationNodes.h"
#include "frontend/SlcShaderTypeNode.h"
#include "frontend/SlcStmtNodes.h"
#include "frontend/SlcStorageSpecNode.h"
#include "frontend/SlcTextureNodes.h"
#include "frontend/SlcTypeNode.h"
