#pragma once

#include <string>

/// A file being written, in a private folder next to its final place if possible. So concurrent
/// runs on the same source or in the same directory do not disturb each other, and a partial file
/// does not look complete. The file has its final name from the start, since programs that read it
/// may show or store the name.
///
/// The destructor removes the folder, and the file unless `MoveIntoPlace` has moved it; so does a
/// signal that `QxDebug` handles.
class SlcUnfinishedFile {
public:
    /// What happens to the file if `std::exit` ends the process.
    enum class OnExit { Remove, MoveIntoPlace };
    /// Where the folder is made if it cannot be next to the final place. `Temporary`, the directory
    /// for temporary files, suffices for a file that the run reads and does not keep.
    enum class Else { Nowhere, Temporary };

    /// Makes the folder; the caller creates the file. If no folder can be made, `Path` is the final
    /// place, where the attempt to write usually fails for the same reason.
    explicit SlcUnfinishedFile(std::string place, OnExit onExit = OnExit::Remove,
                               Else otherwise = Else::Nowhere);
    ~SlcUnfinishedFile();
    SlcUnfinishedFile(const SlcUnfinishedFile&) = delete;
    SlcUnfinishedFile& operator=(const SlcUnfinishedFile&) = delete;

    /// Returns the path to write to.
    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// Returns the folder; empty if none could be made, and `errno` after the construction is then
    /// the reason.
    [[nodiscard]] const std::string& Folder() const { return m_folder; }

    /// False for a file in the directory for temporary files.
    [[nodiscard]] bool IsBesidePlace() const { return m_isBeside; }

    /// Moves the file to its final place. False, with the reason in `errno`, if that fails.
    [[nodiscard]] bool MoveIntoPlace();

private:
    std::string m_place;
    bool m_isBeside = true;
    std::string m_folder;  // empty if none could be made
    std::string m_path;
    bool m_isMoved = false;
};
