// Frames are elements of a map, since these never move: shared objects store addresses of frames,
// including those of names that are reserved before they are defined.
//
// Tested by tests/host/HostTest.cpp.

#include "host/QxHostSpaces.h"

void QxHostSpaces::Define(const std::string& name, const QxFrame3D& frame)
{
    m_frames[name] = frame;
    ++m_changes;
}

const QxFrame3D* QxHostSpaces::Reserve(const char* name)
{
    if (m_outer && m_frames.find(name) == m_frames.end())
        return m_outer->Reserve(name);
    return &m_frames.emplace(name, QxFrame3D()).first->second;
}

const QxFrame3D* QxHostSpaces::Find(const char* name) const
{
    const auto found = m_frames.find(name);
    if (found != m_frames.end())
        return &found->second;
    return m_outer ? m_outer->Find(name) : &m_frames.find("current")->second;
}

const QxFrame3D* QxHostSpaces::Find(const std::string& name) const
{
    return Find(name.c_str());
}

const std::string* QxHostSpaces::NameOf(const QxFrame3D* frame) const
{
    for (const auto& [name, known] : m_frames)
        if (&known == frame)
            return &name;
    return nullptr;
}

unsigned long QxHostSpaces::Changes() const
{
    return m_changes + (m_outer ? m_outer->Changes() : 0);
}
