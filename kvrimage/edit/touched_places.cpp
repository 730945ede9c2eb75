#include "kvrimage/edit/touched_places.h"

#include <algorithm>
#include <utility>

namespace kvrimage {

std::vector<touched_place> find_touched_places(const std::vector<setting_place>& places,
                                               edit_pieces& pieces) {
    std::vector<touched_place> touched;
    for (auto place = places.rbegin(); place != places.rend() && !pieces.empty(); ++place) {
        std::vector<edit_piece> taken = pieces.take(place->addresses);
        if (!taken.empty()) {
            touched.push_back({place->number, std::move(taken)});
        }
    }
    std::ranges::reverse(touched);
    return touched;
}

} // namespace kvrimage
