#include "Facts.h"

#include <algorithm>
#include <cstddef>

namespace {

/// The digits at the start.
std::string_view numberAt(std::string_view text) {
    return text.substr(0, std::min(text.find_first_not_of("0123456789"), text.size()));
}

std::string_view withoutZeros(std::string_view number) {
    return number.substr(std::min(number.find_first_not_of('0'), number.size()));
}

/// Negative, zero or positive, as the values compare.
int compareNumbers(std::string_view left, std::string_view right) {
    left = withoutZeros(left);
    right = withoutZeros(right);
    if (left.size() != right.size())
        return left.size() < right.size() ? -1 : 1;
    return left.compare(right);
}

} // namespace

bool PathOrder::operator()(std::string_view left, std::string_view right) const {
    const std::string_view wholeLeft = left;
    const std::string_view wholeRight = right;
    while (!left.empty() && !right.empty()) {
        const std::string_view leftNumber = numberAt(left);
        const std::string_view rightNumber = numberAt(right);
        if (leftNumber.empty() || rightNumber.empty()) {
            if (left.front() != right.front())
                return static_cast<unsigned char>(left.front()) < static_cast<unsigned char>(right.front());
            left.remove_prefix(1);
            right.remove_prefix(1);
            continue;
        }
        if (const int order = compareNumbers(leftNumber, rightNumber); order != 0)
            return order < 0;
        left.remove_prefix(leftNumber.size());
        right.remove_prefix(rightNumber.size());
    }
    if (left.empty() != right.empty())
        return left.empty();
    // The same but for zeros in front of numbers.
    return wholeLeft < wholeRight;
}
