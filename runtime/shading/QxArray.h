#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

/// An array of plain values, which are initially zero. It replaces std::vector, since compiling
/// <vector> costs more than the rest of a small shader. The constructor and `Reset` throw what
/// `new` throws.
template <class Element>
class QxArray {
public:
    QxArray() = default;
    explicit QxArray(std::size_t size) : m_elements(Make(size)), m_size(size) {}
    QxArray(const QxArray&) = delete;
    QxArray& operator=(const QxArray&) = delete;
    ~QxArray() { delete[] m_elements; }

    /// Changes the number of elements, and sets all of them to zero. If it throws, the array is
    /// unchanged.
    void Reset(std::size_t size)
    {
        if (size != m_size) {
            Element* elements = Make(size);
            delete[] m_elements;
            m_elements = elements;
            m_size = size;
            return;
        }
        for (Element& element : *this)
            element = Element();
    }
    Element* Data() { return m_elements; }
    const Element* Data() const { return m_elements; }
    std::size_t Size() const { return m_size; }
    Element& operator[](std::size_t place) { return m_elements[place]; }
    const Element& operator[](std::size_t place) const { return m_elements[place]; }
    Element* begin() { return m_elements; }
    Element* end() { return m_elements + m_size; }

private:
    static Element* Make(std::size_t size) { return size != 0 ? new Element[size]() : nullptr; }

    Element* m_elements = nullptr;
    std::size_t m_size = 0;
};

/// A list of plain values that can grow. Elements are moved by `realloc`, so `Element` must be
/// trivially copyable.
template <class Element>
class QxList {
public:
    QxList() = default;
    QxList(const QxList&) = delete;
    QxList& operator=(const QxList&) = delete;
    ~QxList() { std::free(m_elements); }

    /// Appends a copy of the element, which may be an element of this list. Throws std::bad_alloc
    /// if there is no memory.
    void Add(Element element)
    {
        if (m_size == m_room) {
            const std::size_t room = 2 * m_room + 16;
            void* const grown = std::realloc(m_elements, room * sizeof(Element));
            if (!grown)
                throw std::bad_alloc();
            m_elements = static_cast<Element*>(grown);
            m_room = room;
        }
        m_elements[m_size++] = element;
    }
    void Swap(QxList& other)
    {
        Exchange(m_elements, other.m_elements);
        Exchange(m_size, other.m_size);
        Exchange(m_room, other.m_room);
    }
    /// Removes the last element and returns it. This list must not be empty, as for `Last`.
    Element TakeLast() { return m_elements[--m_size]; }
    Element& Last() { return m_elements[m_size - 1]; }
    /// Removes all elements and keeps the memory.
    void Clear() { m_size = 0; }
    std::size_t Size() const { return m_size; }
    Element& operator[](std::size_t place) { return m_elements[place]; }
    const Element& operator[](std::size_t place) const { return m_elements[place]; }
    Element* begin() { return m_elements; }
    Element* end() { return m_elements + m_size; }

private:
    template <class Value>
    static void Exchange(Value& a, Value& b)
    {
        const Value kept = a;
        a = b;
        b = kept;
    }

    Element* m_elements = nullptr;
    std::size_t m_size = 0;
    std::size_t m_room = 0;
};
