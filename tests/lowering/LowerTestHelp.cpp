#include "lowering/LowerTestHelp.h"

#include <gtest/gtest.h>

#include "helpers/CheckedShader.h"
#include "icode/SlcBlockICode.h"
#include "icode/SlcICodeText.h"
#include "semantics/SlcDeleteTree.h"
#include "semantics/SlcSemantics.h"
#include "support/SlcDiagnostics.h"

namespace {

bool IsMark(SlcICode& code)
{
    return dynamic_cast<SlcInvisibleICode*>(&code) != nullptr;
}

}  // namespace

SlcOptionsControl PlainOptions()
{
    SlcOptionsControl options;
    options.m_checkArrayBounds = false;
    options.m_simdInstructions = false;
    options.m_regroupParallelBlocks = false;
    options.m_assignInPlace = false;
    options.m_reuseTempVars = false;
    options.m_reuseBoolFlags = false;
    options.m_optimizeBasicBlocks = false;
    return options;
}

SlcOptionsControl PlainOptionsWith(bool SlcOptionsControl::*option)
{
    SlcOptionsControl options = PlainOptions();
    options.*option = true;
    return options;
}

LoweredShader::LoweredShader(const std::string& source, SlcOptionsControl options)
    : LoweredShader(source, std::move(options), Expected::Accepted)
{
}

LoweredShader::LoweredShader(const std::string& source, SlcOptionsControl options,
                             Expected expected)
    : m_options(std::move(options))
{
    ResetNbErrorsAndWarnings();
    testing::internal::CaptureStderr();
    try {
        m_root = ParseText(source, m_options.m_strict);
        SlcSemantics(m_root.get(), m_options);
        m_form = std::make_unique<SlcInterForm>(m_options);
        m_form->GenInterForm(m_root.get());
        m_accepted = true;
    } catch (const SlcCompilationError&) {
        // The messages give the reason.
    }
    m_messages = testing::internal::GetCapturedStderr();
    if (m_accepted != (expected == Expected::Accepted))
        ADD_FAILURE() << (m_accepted ? "accepted: " : "refused: ") << source << '\n' << m_messages;
}

LoweredShader::~LoweredShader()
{
    m_form.reset();
    SlcDeleteTree cut;
    cut(m_root.get());
}

std::string ToText(const SlcListICode& list)
{
    SlcListICode code;
    for (const auto& instruction : list.m_icodes)
        if (!IsMark(*instruction))
            code.AddICode(instruction);
    return SlcICodeText::Of(code);
}

std::string LowerShader(const std::string& source, SlcOptionsControl options)
{
    LoweredShader shader(source, std::move(options));
    return shader.IsAccepted() ? ToText(*shader.Form().m_mainList) : "refused";
}

std::string MessagesOf(const std::string& source, SlcOptionsControl options)
{
    return LoweredShader(source, std::move(options)).Messages();
}

std::string RefusalOf(const std::string& source, SlcOptionsControl options)
{
    return LoweredShader(source, std::move(options), LoweredShader::Expected::Refused).Messages();
}

std::string LowerBody(const std::string& body, SlcOptionsControl options)
{
    return LowerShader("displacement test(uniform float k = 1; varying float w = 2; output "
                       "varying float o = 0) {" +
                           body + "}",
                       std::move(options));
}

void ExpectCode(std::span<const LowerCase> cases, const SlcOptionsControl& options)
{
    for (const LowerCase& c : cases)
        EXPECT_EQ(LowerBody(c.body, options), c.code) << c.body;
}
