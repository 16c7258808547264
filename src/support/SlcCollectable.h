#pragma once

/// Base of all reference-counted objects. `MakeShared` makes an object; it holds the count itself,
/// and the last `SlcPtr` to it deletes it.
///
/// Cycles are not collected: the header of a class that can be part of a cycle says what breaks it.
class SlcCollectable {
public:
    SlcCollectable() = default;
    SlcCollectable(const SlcCollectable&) = delete;
    SlcCollectable& operator=(const SlcCollectable&) = delete;
    virtual ~SlcCollectable() = default;

private:
    template <class T>
    friend class SlcPtr;

    int m_references = 0;  // number of SlcPtr to this object
};
