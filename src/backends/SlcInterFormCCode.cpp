// The C++ writer's part of the compiled shader.

#include <sstream>

#include "backends/SlcGenCCode.h"
#include "backends/SlcWholeFile.h"
#include "frontend/SlcParseCode.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

void SlcInterForm::GenCCode()
{
    std::ostringstream text;
    SlcGenCCode(m_errors, &m_options, text).GenCCode(*this);
    if (!m_errors->NoError())
        throw SlcCompilationError();
    SlcWriteWholeFile(m_errors, g_ccFilename + ".cpp", text.view(), "C++ code generation");
}
