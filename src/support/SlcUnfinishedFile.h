#pragma once

#include <string>

/// A file in the making, in a folder that no other run has, beside the place where it is to go.
/// Runs on the same source or in the same directory therefore do not disturb each other, and no
/// part of a file looks like a whole one. The file's name is that of its place, since programs that
/// read it may show or store it.
///
/// Folder and file are removed with the object, and by a signal that ends the process.
class SlcUnfinishedFile {
public:
    /// What `std::exit`, which ends the process after a fatal error, does with the file.
    enum class OnExit { Remove, MoveIntoPlace };

    /// Makes the folder; the file is the caller's to make. Where no folder can be made, the file is
    /// written in its place, so that the writer's report says why that is not possible.
    explicit SlcUnfinishedFile(std::string place, OnExit onExit = OnExit::Remove);
    ~SlcUnfinishedFile();
    SlcUnfinishedFile(const SlcUnfinishedFile&) = delete;
    SlcUnfinishedFile& operator=(const SlcUnfinishedFile&) = delete;

    /// Where to write the file.
    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// Empty, with the reason in `errno`, if none could be made.
    [[nodiscard]] const std::string& Folder() const { return m_folder; }

    /// False, with the reason in `errno`, if the file cannot be moved.
    [[nodiscard]] bool MoveIntoPlace();

private:
    std::string m_place;
    std::string m_folder;  // empty if none could be made
    std::string m_path;
    bool m_isMoved = false;
};
