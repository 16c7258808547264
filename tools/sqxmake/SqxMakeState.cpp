// The state is a folder of small files, so that parallel steps seldom write to the same file:
//
//     stamps/ID      source and output of the last successful compile; ninja compares its time
//     owners/OUTPUT  source of an output, so that two shaders with the same name are noticed
//     failed/ID      reports of the last compile, if it failed
//     searched/ID    paths that the last successful compile searched, see `SqxSearchedPlaces`
//     unnamed/ID     files that were read and that ninja cannot name, if there are any
//     work/ID        folder in which a source is being compiled
//     options        working directory and compiler options of the last build
//     stopped        exists while the steps of a build must compile nothing
//
// The folder also contains the locks, the file for ninja and the files that ninja writes.
//
// A null character ends each text in `unnamed` and `options`, since texts may contain line breaks.
//
// `Claim` reads and writes the owner of an output under a lock: if two sources claim the output at
// the same time, only one of them gets it.
//
// Tested by tests/make/run.sh.

#include "sqxmake/SqxMakeState.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string_view>

#include "process/SqxFileLock.h"
#include "process/SqxWholeFile.h"
#include "sqxmake/SqxMakeOptions.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* k_folders[] = {"stamps", "owners", "failed", "searched", "unnamed", "work"};

constexpr std::chrono::seconds k_staleAge{1};  // of a stale stamp, relative to its source

constexpr const char* k_ownersLock = "owners.lock";
constexpr const char* k_stopped = "stopped";
constexpr const char* k_optionsFile = "options";

/// Returns the FNV-1a hash of 64 bits, in hexadecimal.
[[nodiscard]] std::string HashOf(std::string_view text)
{
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    std::string digits;
    for (int shift = 60; shift >= 0; shift -= 4)
        digits += "0123456789abcdef"[(hash >> shift) & 15U];
    return digits;
}

[[nodiscard]] std::vector<std::string> ReadTexts(const fs::path& path)
{
    std::vector<std::string> texts;
    std::ifstream file(path, std::ios::binary);
    for (std::string text; std::getline(file, text, '\0');)
        texts.push_back(text);
    return texts;
}

void WriteTexts(const fs::path& path, const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += text + '\0';
    SqxWriteText(path, all);
}

}  // namespace

std::optional<std::string> SqxReadText(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(file), {}};
    return text;
}

void SqxWriteText(const fs::path& path, const std::string& text)
{
    if (!SqxWriteWholeFile(path, text))
        throw SqxMakeError("File '" + path.string() + "' cannot be written");
}

void SqxMakeState::Create() const
{
    for (const char* name : k_folders) {
        std::error_code failed;
        fs::create_directories(m_folder / name, failed);
        if (failed)
            throw SqxMakeError("Folder '" + (m_folder / name).string() +
                               "' cannot be made: " + failed.message());
    }
}

std::string SqxMakeState::IdOf(const fs::path& source)
{
    std::string name = source.stem().string();
    for (char& c : name)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_')
            c = '_';
    return name.substr(0, 100) + "-" + HashOf(fs::absolute(source).lexically_normal().string());
}

fs::path SqxMakeState::StampOf(const std::string& id) const
{
    return m_folder / "stamps" / id;
}
fs::path SqxMakeState::FailureOf(const std::string& id) const
{
    return m_folder / "failed" / id;
}
fs::path SqxMakeState::SearchedOf(const std::string& id) const
{
    return m_folder / "searched" / id;
}
fs::path SqxMakeState::UnnamedOf(const std::string& id) const
{
    return m_folder / "unnamed" / id;
}
fs::path SqxMakeState::WorkOf(const std::string& id) const
{
    return m_folder / "work" / id;
}

std::optional<SqxMakeState::Stamp> SqxMakeState::ReadStamp(const fs::path& path)
{
    std::ifstream file(path);
    Stamp stamp;
    if (!std::getline(file, stamp.source) || !std::getline(file, stamp.output))
        return std::nullopt;
    return stamp;
}

void SqxMakeState::WriteStamp(const fs::path& path, const Stamp& stamp)
{
    SqxWriteText(path, stamp.source + "\n" + stamp.output + "\n");
}

std::optional<std::string> SqxMakeState::Claim(const std::string& output,
                                               const std::string& source) const
{
    const fs::path path = m_folder / "owners" / output;
    std::error_code exists;
    fs::create_directories(path.parent_path(), exists);
    const SqxFileLock lock(m_folder / k_ownersLock, SqxFileLock::IfTaken::Wait);
    if (lock.Found() != SqxFileLock::State::Held)
        throw SqxMakeError("Folder '" + m_folder.string() + "' cannot be written");
    const std::optional<std::string> owner = SqxReadText(path);
    std::error_code ignored;
    if (owner && *owner != source && fs::exists(*owner, ignored))
        return owner;
    SqxWriteText(path, source);
    return std::nullopt;
}

void SqxMakeState::MarkStale(const fs::path& source) const
{
    std::error_code isGone;
    const auto time = fs::last_write_time(source, isGone);
    if (!isGone)
        fs::last_write_time(StampOf(IdOf(source)), time - k_staleAge, isGone);
}

bool SqxMakeState::IsStale(const fs::path& source) const
{
    std::error_code isGone;
    const auto stamp = fs::last_write_time(StampOf(IdOf(source)), isGone);
    return !isGone && stamp == fs::last_write_time(source, isGone) - k_staleAge;
}

void SqxMakeState::WriteUnnamed(const std::string& id, const std::vector<std::string>& files) const
{
    std::error_code ignored;
    fs::remove(UnnamedOf(id), ignored);
    if (files.empty())
        return;
    std::vector<std::string> paths = files;
    for (std::string& path : paths)
        path = fs::absolute(path).string();
    WriteTexts(UnnamedOf(id), paths);
}

bool SqxMakeState::HasChangedUnnamed(const std::string& id) const
{
    std::error_code isGone;
    const auto stamp = fs::last_write_time(StampOf(id), isGone);
    const std::vector<std::string> files = ReadTexts(UnnamedOf(id));
    return std::any_of(files.begin(), files.end(), [&](const std::string& file) {
        const auto time = fs::last_write_time(file, isGone);
        return isGone || time > stamp;
    });
}

void SqxMakeState::WriteOptions(const Options& options) const
{
    std::vector<std::string> texts = {options.folder.string()};
    texts.insert(texts.end(), options.words.begin(), options.words.end());
    WriteTexts(m_folder / k_optionsFile, texts);
}

SqxMakeState::Options SqxMakeState::ReadOptions() const
{
    const std::vector<std::string> texts = ReadTexts(m_folder / k_optionsFile);
    if (texts.empty())
        return {};
    return {texts.front(), {texts.begin() + 1, texts.end()}};
}

void SqxMakeState::Stop() const
{
    SqxWriteText(m_folder / k_stopped, "");
}

void SqxMakeState::Resume() const
{
    std::error_code ignored;
    fs::remove(m_folder / k_stopped, ignored);
}

bool SqxMakeState::IsStopped() const
{
    std::error_code ignored;
    return fs::exists(m_folder / k_stopped, ignored);
}

void SqxMakeState::Discard(const fs::path& stamp, const fs::path& outputFolder) const
{
    const std::optional<Stamp> known = ReadStamp(stamp);
    std::error_code ignored;
    if (known) {
        const fs::path owner = m_folder / "owners" / known->output;
        const SqxFileLock lock(m_folder / k_ownersLock, SqxFileLock::IfTaken::Wait);
        if (lock.Found() == SqxFileLock::State::Held && SqxReadText(owner) == known->source) {
            fs::remove(outputFolder / known->output, ignored);
            fs::remove(owner, ignored);
        }
    }
    fs::remove(stamp, ignored);
    fs::remove(SearchedOf(stamp.filename()), ignored);
    fs::remove(UnnamedOf(stamp.filename()), ignored);
}
