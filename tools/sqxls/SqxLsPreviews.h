#pragma once

#include <atomic>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

/// The running programs that show shaders, one for each source. They end with the object.
class SqxLsPreviews {
public:
    SqxLsPreviews();
    ~SqxLsPreviews();
    SqxLsPreviews(const SqxLsPreviews&) = delete;
    SqxLsPreviews& operator=(const SqxLsPreviews&) = delete;

    /// Returns the address of the page of a source. Starts `program` unless it already runs for the
    /// source; with `opens`, a program that is started opens the browser. Waits at most a few
    /// seconds. Throws `SqxLsError` with the message of the program if there is no page.
    [[nodiscard]] std::string AddressOf(const std::string& path, const std::string& program,
                                        bool opens);
    /// Ends the program of a source.
    void End(const std::string& path);

private:
    class Running;
    std::map<std::string, std::unique_ptr<Running>> m_running;  // by path
};
