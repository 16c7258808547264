// The C++ writer's part of the compiled shader.

#include "backends/SlcFileInProgress.h"
#include "backends/SlcGenCCode.h"
#include "frontend/SlcParseCode.h"

void SlcInterForm::GenCCode()
{
    SlcFileInProgress file(m_errors, g_ccFilename + ".cpp", "C++ code generation");
    SlcGenCCode(m_errors, &m_options, file.Out()).GenCCode(*this);
    file.Finish();
}
