#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "helpers/TemporaryFolder.h"
#include "sqxview/SqxViewSession.h"

constexpr const char* k_flat =
    "surface flat(float Kd = 0.5; color tint = 1) { Ci = Kd * tint; Oi = 1; }\n";

/// Holds sources in a separate folder, and a session that watches them.
class ViewedShaders : public ::testing::Test {
protected:
    /// Starts a session with small pictures, which save time.
    void View(const std::vector<std::string>& words)
    {
        std::vector<std::string> arguments = {"--size", "16x16", "--samples", "1"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        m_session.emplace(SqxReadViewOptions(arguments));
    }

    /// Waits for a state that contains `text` and returns it. Fails the test and returns the last
    /// state if there is none within 30 seconds.
    std::string WaitFor(const std::string& text)
    {
        constexpr auto k_longest = std::chrono::seconds(30);
        const auto end = std::chrono::steady_clock::now() + k_longest;
        unsigned long version = 0;
        while (true) {
            std::string state = m_session->State(version, std::chrono::seconds(1));
            if (state.find(text) != std::string::npos)
                return state;
            if (std::chrono::steady_clock::now() > end) {
                ADD_FAILURE() << "Never there: " << text << "\nLast: " << state;
                return state;
            }
            version = std::stoul(state.substr(state.find(':') + 1));
        }
    }
    std::string WaitForWhole() { return WaitFor(k_whole); }
    /// Waits for a whole picture other than `before`, and returns the bytes of its file. Fails the
    /// test and returns nothing if there is none after 1000 attempts.
    std::vector<char> NextPicture(const std::vector<char>& before = {})
    {
        for (int i = 0; i < 1000; ++i) {
            WaitForWhole();
            const auto picture = m_session->Picture();
            if (picture && *picture != before)
                return *picture;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        ADD_FAILURE() << "The picture stays the same";
        return {};
    }

    static constexpr const char* k_whole = "\"isOver\":true,\"isWhole\":true";
    TemporaryFolder m_folder;
    std::optional<SqxViewSession> m_session;
};
