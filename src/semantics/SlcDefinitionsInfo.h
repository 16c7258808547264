#pragma once

#include "symbols/SlcSymbolTable.h"

class SlcShaderTypeNode;

/// The annotation that the semantic pass attaches to the root: the outer scopes and the kind of the
/// shader.
class SlcDefinitionsInfo : public SlcAnnotation {
public:
    SlcDefinitionsInfo(SlcPtr<SlcSymbolTable> globalTable, SlcPtr<SlcSymbolTable> shaderTable,
                       SlcShaderTypeNode* shaderType)
        : m_globalTable(std::move(globalTable)),
          m_shaderTable(std::move(shaderTable)),
          m_shaderType(shaderType)
    {
    }
    /// Returns the table of the built-ins and of the functions defined at file level.
    [[nodiscard]] const SlcPtr<SlcSymbolTable>& GetGlobalTable() const { return m_globalTable; }
    /// Returns the table of the predefined variables of the shader's kind.
    [[nodiscard]] const SlcPtr<SlcSymbolTable>& GetShaderTable() const { return m_shaderTable; }
    [[nodiscard]] SlcShaderTypeNode* GetShaderType() const { return m_shaderType; }

private:
    SlcPtr<SlcSymbolTable> m_globalTable;
    SlcPtr<SlcSymbolTable> m_shaderTable;
    SlcShaderTypeNode* m_shaderType;
};
