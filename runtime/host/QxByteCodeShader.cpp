// Adapts a program of the machine to `QxShader`: copies its interface once, and forwards the calls
// of a run to a `QxMachineRun`.
//
// Tested by tests/host/HostTest.cpp, where most tests run with byte-code and with shared objects.

#include "host/QxByteCodeShader.h"

#include "machine/run/QxMachineRun.h"

class QxByteCodeShader::Run : public QxShaderRun {
public:
    explicit Run(const QxMachineProgram& program) : m_run(program) {}

    void Initialize(const QxShadingContext& context, const QxFrame3D**,
                    std::vector<QxVar>& variables) override
    {
        m_run.Initialize(context, variables);
    }
    void Evaluate(const QxGrid& layout, const QxShadingContext& context,
                  const QxHiddenVariables& hidden, std::vector<QxVar>& variables,
                  std::vector<QxLightInput>& lights) override
    {
        m_run.Evaluate(layout, context, hidden, variables, lights);
    }
    void SetStepLimit(std::size_t limit) override { m_run.SetStepLimit(limit); }
    void SetMemoryLimit(std::size_t bytes) override { m_run.SetMemoryLimit(bytes); }
    void SetStopTest(QxStopTest test) override { m_run.SetStopTest(std::move(test)); }
    void ForgetFiles() override { m_run.ForgetFiles(); }

private:
    QxMachineRun m_run;
};

QxByteCodeShader::QxByteCodeShader(std::string_view bytes, const std::string& name,
                                   const std::vector<std::string>& shadeopFolders,
                                   QxKernelChoice kernels)
    : QxShader(name),
      m_program(bytes, name, shadeopFolders, kernels)
{
    m_info = m_program.Info();
}

QxByteCodeShader::QxByteCodeShader(const SqxShader& shader, const std::string& name,
                                   const std::vector<std::string>& shadeopFolders)
    : QxShader(name),
      m_program(shader, name, shadeopFolders)
{
    m_info = m_program.Info();
}

std::unique_ptr<QxShaderRun> QxByteCodeShader::NewRun() const
{
    return std::make_unique<Run>(m_program);
}

bool QxByteCodeShader::IsDefaultPerPoint(std::size_t parameter) const
{
    return m_program.IsDefaultPerPoint(parameter);
}
