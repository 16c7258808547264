// Frames are allocated one by one, so that they never move: shared objects store their addresses. A
// name can be reserved before it is defined, and then keeps its frame.
//
// Tested by tests/host/HostSceneTest.cpp.

#include "host/QxHostSpaces.h"

#include <algorithm>

/// Returns the position of a name, or where it would be inserted.
std::size_t QxHostSpaces::PlaceOf(std::string_view name) const
{
    const auto found = std::partition_point(m_frames.begin(), m_frames.end(),
                                            [&](const auto& known) { return known->name < name; });
    return static_cast<std::size_t>(found - m_frames.begin());
}

/// Returns a frame of this registry itself; null if the name is not defined or reserved here.
QxFrame3D* QxHostSpaces::FindHere(std::string_view name) const
{
    const std::size_t place = PlaceOf(name);
    const bool found = place < m_frames.size() && m_frames[place]->name == name;
    return found ? &m_frames[place]->frame : nullptr;
}

QxFrame3D& QxHostSpaces::Make(std::string_view name)
{
    const auto place = m_frames.begin() + static_cast<std::ptrdiff_t>(PlaceOf(name));
    auto made = std::make_unique<NamedFrame>(NamedFrame{std::string(name), QxFrame3D()});
    return (*m_frames.insert(place, std::move(made)))->frame;
}

void QxHostSpaces::Define(const std::string& name, const QxFrame3D& frame)
{
    QxFrame3D* const known = FindHere(name);
    (known ? *known : Make(name)) = frame;
    ++m_changes;
}

const QxFrame3D* QxHostSpaces::Reserve(const char* name)
{
    if (const QxFrame3D* const known = FindHere(name))
        return known;
    return m_outer ? m_outer->Reserve(name) : &Make(name);
}

const QxFrame3D* QxHostSpaces::Find(const char* name) const
{
    if (const QxFrame3D* const known = FindHere(name))
        return known;
    return m_outer ? m_outer->Find(name) : FindHere("current");
}

const QxFrame3D* QxHostSpaces::Find(const std::string& name) const
{
    return Find(name.c_str());
}

const std::string* QxHostSpaces::NameOf(const QxFrame3D* frame) const
{
    for (const auto& known : m_frames)
        if (&known->frame == frame)
            return &known->name;
    return nullptr;
}

unsigned long QxHostSpaces::Changes() const
{
    return m_changes + (m_outer ? m_outer->Changes() : 0);
}
