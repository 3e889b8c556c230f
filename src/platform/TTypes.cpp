#include "TTypes.h"

#include <algorithm>

bool IntersectRect(TRect& result, const TRect& a, const TRect& b) {
    result = {std::max(a.Left, b.Left), std::max(a.Top, b.Top), std::min(a.Right, b.Right),
              std::min(a.Bottom, b.Bottom)};
    if (result.IsEmpty()) {
        result = {};
        return false;
    }
    return true;
}
