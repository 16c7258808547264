#pragma once

#include <map>
#include <string>

#include "QxShading.h"

/// The coordinate systems of a host by name; "current" is always there. Frames never move and are
/// never removed, so that shaders may keep their addresses as long as the registry lives.
///
/// Look-ups may go on in several threads, but not beside `Define` and `Reserve`.
class QxHostSpaces : public QxSpaceRegistry {
public:
    QxHostSpaces() { Define("current", QxFrame3D()); }
    /// Names that are not defined here have the frames of `outer`, which must outlive this one.
    explicit QxHostSpaces(QxHostSpaces& outer) : m_outer(&outer) {}

    /// Defines a name, or gives it another frame: whoever holds its address sees the new one.
    void Define(const std::string& name, const QxFrame3D& frame);
    /// The frame of a name, which is like the current space until somebody defines it.
    const QxFrame3D* Reserve(const char* name) override;
    /// The frame of a name, or that of "current" if there is none; never null.
    [[nodiscard]] const QxFrame3D* Find(const char* name) const override;
    [[nodiscard]] const QxFrame3D* Find(const std::string& name) const;
    /// The name of a frame of this registry, by its address; null for one of another. O(n).
    [[nodiscard]] const std::string* NameOf(const QxFrame3D* frame) const;
    /// Grows with each definition, here and in the outer registries: who keeps what follows from
    /// frames computes it anew when this is another number than before.
    [[nodiscard]] unsigned long Changes() const;

private:
    std::map<std::string, QxFrame3D, std::less<>> m_frames;
    QxHostSpaces* m_outer = nullptr;
    unsigned long m_changes = 0;
};
