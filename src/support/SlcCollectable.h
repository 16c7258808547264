#pragma once

/// Base of everything that is shared by reference. An object is made with `new` inside a
/// `SlcPtr`, which counts its holders here and deletes it with the last one.
///
/// Cycles are not collected: a class that can be part of one says who cuts it.
class SlcCollectable {
public:
    SlcCollectable() = default;
    SlcCollectable(const SlcCollectable&) = delete;
    SlcCollectable& operator=(const SlcCollectable&) = delete;
    virtual ~SlcCollectable() = default;

private:
    template <class T>
    friend class SlcPtr;

    int m_references = 0;  // number of SlcPtr that hold this object
};
