#pragma once

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

/// The running programs (`sqxview`) that show shaders, one for each previewed source. They end when
/// the object is destroyed.
class SqxLsPreviews {
public:
    SqxLsPreviews();
    ~SqxLsPreviews();
    SqxLsPreviews(const SqxLsPreviews&) = delete;
    SqxLsPreviews& operator=(const SqxLsPreviews&) = delete;

    /// Returns the address of the page of a source. Starts `program`, a path or the name of a
    /// program beside this one or in `PATH`, unless it already runs for the source and has printed
    /// the address; with `opens`, a program that is started opens the browser. Waits up to 5
    /// seconds for the address of a running program, and as long for that of a started one. Throws
    /// `SqxLsError` with the last line that the program printed if there is no page.
    [[nodiscard]] std::string AddressOf(const std::string& path, const std::string& program,
                                        bool opens);
    /// Ends the program of a source, if one runs.
    void End(const std::string& path);

private:
    class Running;
    std::map<std::string, std::unique_ptr<Running>> m_running;  // by path
};
