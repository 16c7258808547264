#include "host/SharedObjects.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <thread>

#include "helpers/TemporaryFolder.h"

namespace {

constexpr const char* k_entryPoints[] = {"QxRegister",      "QxInterfaceVersion", "QxInterrogate",
                                         "QxInitialize",    "QxEvaluate",         "QxDestroy",
                                         "QxUseRayTracing", "QxModifyPoint"};
constexpr const char* k_include = "#include \"slcShaderCCodeOp.h\"";
constexpr std::size_t k_batchSize = 24;

}  // namespace

std::string SharedObjects::Add(const std::string& text)
{
    const std::string name = std::to_string(m_count++);
    std::string body = text;
    if (const auto include = body.find(k_include); include != std::string::npos)
        body.erase(include, std::strlen(k_include));  // the batch includes it once at the start
    std::ofstream(m_folder / (name + ".cpp")) << body;
    return m_folder / (name + ".sqx");
}

std::string SharedObjects::Compiler() const
{
    return "cd '" + m_folder.string() + "' && " + m_compiler +
           " -w -ffp-contract=off -fno-math-errno -fPIC -I. -I" SLC_RUNTIME_FOLDER " ";
}

std::string SharedObjects::Run(const std::string& command, const std::string& name) const
{
    const auto messages = m_folder / (name + ".messages");
    if (std::system(("{ " + command + "; } >'" + messages.string() + "' 2>&1").c_str()) == 0)
        return {};
    return command + '\n' + TemporaryFolder::Read(messages);
}

std::string SharedObjects::Precompile() const
{
    return Run(Compiler() + "-x c++-header " SLC_RUNTIME_FOLDER
                            "/slcShaderCCodeOp.h -o slcShaderCCodeOp.h.gch",
               "header");
}

/// Joins all files of a batch into one. Each file is in a separate namespace, and macros append its
/// number to the names of its entry points.
void SharedObjects::WriteBatch(const Batch& batch) const
{
    std::ofstream all(m_folder / ("batch" + std::to_string(batch.first) + ".cpp"));
    all << k_include << '\n';
    for (std::size_t i = batch.first; i < batch.end; ++i) {
        all << "namespace s" << i << " {\n";
        for (const char* entry : k_entryPoints)
            all << "#undef " << entry << "\n#define " << entry << ' ' << entry << '_' << i << '\n';
        all << "#include \"" << i << ".cpp\"\n}\n";
    }
}

std::string SharedObjects::BuildBatch(const Batch& batch) const
{
    WriteBatch(batch);
    const std::string name = "batch" + std::to_string(batch.first);
    std::string messages = Run(Compiler() + "-c " + name + ".cpp -o " + name + ".o", name);
    for (std::size_t i = batch.first; i < batch.end && messages.empty(); ++i) {
        std::string link = Compiler() + "-shared -o " + std::to_string(i) + ".sqx " + name + ".o";
        for (const char* entry : k_entryPoints)
            link += std::string(" -Wl,--defsym=") + entry + '=' + entry + '_' + std::to_string(i);
        messages = Run(link, name);
    }
    return messages;
}

std::string SharedObjects::Build()
{
    std::string messages = Precompile();
    std::mutex guard;
    std::atomic<std::size_t> next = m_built;
    const auto work = [&] {
        for (;;) {
            const std::size_t first = next.fetch_add(k_batchSize);
            if (first >= m_count)
                return;
            const std::string found = BuildBatch({first, std::min(first + k_batchSize, m_count)});
            const std::lock_guard lock(guard);
            messages += found;
        }
    };
    {
        std::vector<std::jthread> workers;
        for (unsigned int i = 0; i < std::max(1U, std::thread::hardware_concurrency()); ++i)
            workers.emplace_back(work);
    }
    m_built = m_count;
    return messages;
}
