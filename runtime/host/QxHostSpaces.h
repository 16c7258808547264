#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "QxShading.h"

/// The coordinate systems of a host by name; "current" is always defined. A frame keeps its address
/// for the life of the registry, so shaders may store pointers to frames.
///
/// Several threads may look names up at a time, but not while one calls `Define` or `Reserve`.
class QxHostSpaces : public QxSpaceRegistry {
public:
    /// Creates a registry that contains only "current".
    QxHostSpaces() { Define("current", QxFrame3D()); }
    /// Creates a registry without spaces. Names that are not defined here are looked up in `outer`,
    /// which must outlive this registry.
    explicit QxHostSpaces(QxHostSpaces& outer) : m_outer(&outer) {}

    /// Defines a space in this registry, or redefines it at the same address. `frame` holds the
    /// matrices between the space and the current one.
    void Define(const std::string& name, const QxFrame3D& frame);
    /// Returns the frame of a name; never null. A name that is not defined yet gets a new frame in
    /// the outermost registry, equal to the current space; a later `Define` there changes it in
    /// place.
    const QxFrame3D* Reserve(const char* name) override;
    /// Returns the frame of a name, or that of "current" if the name is not defined; never null.
    [[nodiscard]] const QxFrame3D* Find(const char* name) const override;
    [[nodiscard]] const QxFrame3D* Find(const std::string& name) const;
    /// Returns the name of a frame by its address; null if this registry itself does not have the
    /// frame. O(n).
    [[nodiscard]] const std::string* NameOf(const QxFrame3D* frame) const;
    /// Returns a count that grows with each definition, here and in the outer registries. A caller
    /// that caches values computed from frames must recompute them if the count has changed.
    [[nodiscard]] unsigned long Changes() const;

private:
    struct NamedFrame {
        std::string name;
        QxFrame3D frame;
    };

    [[nodiscard]] std::size_t PlaceOf(std::string_view name) const;
    [[nodiscard]] QxFrame3D* FindHere(std::string_view name) const;
    /// Inserts a frame that is equal to the current space.
    QxFrame3D& Make(std::string_view name);

    std::vector<std::unique_ptr<NamedFrame>> m_frames;  // sorted by name
    QxHostSpaces* m_outer = nullptr;
    unsigned long m_changes = 0;
};
