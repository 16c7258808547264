// Tested by tests/sqxls/SqxLsActionsTest.cpp.

#include "sqxls/SqxLsPreviews.h"

#include <chrono>
#include <filesystem>
#include <utility>

#include "process/SqxProcess.h"
#include "sqxls/SqxLsJson.h"

namespace {

constexpr std::string_view k_announces = "The page is at ";

std::string ProgramNamed(const std::string& name)
{
    std::error_code failed;
    const std::filesystem::path beside = SqxProgramBeside(name);
    const bool isPath = name.find('/') != std::string::npos;
    return !isPath && std::filesystem::exists(beside, failed) ? beside.string() : name;
}

}  // namespace

/// A program, and the thread that runs it and reads its output. The destructor ends the program.
class SqxLsPreviews::Running {
public:
    explicit Running(std::vector<std::string> words)
        : m_thread([this, words = std::move(words)] { Run(words); })
    {
    }
    ~Running()
    {
        m_isOver = true;
        m_thread.join();
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    /// Waits for the address of the page and returns it; empty if the program has ended, or prints
    /// none within 5 seconds.
    [[nodiscard]] std::string Address()
    {
        std::unique_lock lock(m_mutex);
        m_hasNews.wait_for(lock, std::chrono::seconds(5),
                           [this] { return m_hasEnded || !m_address.empty(); });
        return m_hasEnded ? "" : m_address;
    }
    [[nodiscard]] std::string LastLine()
    {
        const std::scoped_lock lock(m_mutex);
        return m_lastLine;
    }

private:
    void Run(const std::vector<std::string>& words)
    {
        SqxCommand command;
        command.words = words;
        command.onLine = [this](const std::string& line) { Read(line); };
        command.isOver = [this] { return m_isOver.load(); };
        (void)SqxRunCommand(command);
        const std::scoped_lock lock(m_mutex);
        m_hasEnded = true;
        m_hasNews.notify_all();
    }

    void Read(const std::string& line)
    {
        const std::scoped_lock lock(m_mutex);
        m_lastLine = line;
        if (line.starts_with(k_announces))
            m_address = line.substr(k_announces.size(), line.find(';') - k_announces.size());
        m_hasNews.notify_all();
    }

    std::mutex m_mutex;
    std::condition_variable m_hasNews;
    std::string m_address;
    std::string m_lastLine;
    bool m_hasEnded = false;
    std::atomic<bool> m_isOver = false;
    std::thread m_thread;  // last, since it uses the other members
};

SqxLsPreviews::SqxLsPreviews() = default;
SqxLsPreviews::~SqxLsPreviews() = default;

void SqxLsPreviews::End(const std::string& path)
{
    m_running.erase(path);
}

std::string SqxLsPreviews::AddressOf(const std::string& path, const std::string& program,
                                     bool opens)
{
    const auto known = m_running.find(path);
    if (known != m_running.end())
        if (std::string address = known->second->Address(); !address.empty())
            return address;
    std::vector<std::string> words = {ProgramNamed(program)};
    if (opens)
        words.emplace_back("--open");
    words.push_back(path);
    m_running.erase(path);
    Running& running = *(m_running[path] = std::make_unique<Running>(std::move(words)));
    if (std::string address = running.Address(); !address.empty())
        return address;
    const std::string said = running.LastLine();
    m_running.erase(path);
    throw SqxLsError(SqxLsErrorCode::RequestFailed,
                     said.empty() ? "'" + program + "' could not be started" : said);
}
