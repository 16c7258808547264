#pragma once

#include <vector>

/// Removes statements, or replaces them by their bodies, as long as their program still fails. True
/// if the program got smaller.
template <class Statement, class StillFails>
bool ShrinkStatements(std::vector<Statement>& list, const StillFails& stillFails)
{
    const auto replace = [&](std::size_t place, const std::vector<Statement>& others) {
        const std::vector<Statement> before = list;
        const auto position = list.begin() + static_cast<std::ptrdiff_t>(place);
        list.insert(list.erase(position), others.begin(), others.end());
        if (stillFails())
            return true;
        list = before;
        return false;
    };
    bool smaller = false;
    for (std::size_t i = 0; i < list.size();) {
        if (replace(i, {}) ||
            (!list[i].body.empty() && replace(i, std::vector<Statement>(list[i].body)))) {
            smaller = true;
            continue;
        }
        smaller |= ShrinkStatements(list[i].body, stillFails);
        smaller |= ShrinkStatements(list[i].otherwise, stillFails);
        ++i;
    }
    return smaller;
}
