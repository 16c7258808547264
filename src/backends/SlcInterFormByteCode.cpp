// The byte-code writer's part of the compiled shader.

#include <sstream>

#include "backends/SlcGenByteCode.h"
#include "backends/SlcWholeFile.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

void SlcInterForm::GenByteCode(const std::string& directory)
{
    std::ostringstream text;
    SlcGenByteCode(m_errors, text).GenByteCode(*this);
    if (!m_errors->NoError())
        throw SlcCompilationError();
    SlcWriteWholeFile(m_errors, directory + '/' + m_shaderName->GetName() + ".sqx", text.view(),
                      "byte-code generation");
}
