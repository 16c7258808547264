#pragma once

#include <functional>
#include <map>
#include <string>

#include "QxShading.h"

/// The coordinate systems of a host by name; "current" is always there.
class QxHostSpaces : public QxSpaceRegistry {
public:
    QxHostSpaces() { Define("current", QxFrame3D()); }
    /// Names that are not defined here have the frames of `outer`, which must outlive this one.
    explicit QxHostSpaces(QxHostSpaces& outer) : m_outer(&outer) {}

    void Define(const std::string& name, const QxFrame3D& frame);
    const QxFrame3D* Reserve(const char* name) override;
    [[nodiscard]] const QxFrame3D* Find(const char* name) const override;
    [[nodiscard]] const QxFrame3D* Find(const std::string& name) const;
    /// The name of a frame of this registry; null for one of another.
    [[nodiscard]] const std::string* NameOf(const QxFrame3D* frame) const;
    /// Grows with each definition, here and in the outer registries.
    [[nodiscard]] unsigned long Changes() const;

private:
    std::map<std::string, QxFrame3D, std::less<>> m_frames;
    QxHostSpaces* m_outer = nullptr;
    unsigned long m_changes = 0;
};
