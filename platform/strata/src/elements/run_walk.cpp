#include "platform/strata/src/elements/run_walk.hpp"

namespace strata::detail {

run_walk::run_walk(const element_layout& layout, const element_box& box) noexcept
    : layout_(layout), box_(box), stepped_(box.rank), done_(box.count() == 0) {
    for (std::size_t i = 0; i < box.rank; ++i)
        run_.first += box.offset[i] * layout.stride(i);
    if (layout.has_axis())
        run_.row = box.offset[layout.axis()];

    // A dimension joins the run while everything faster than it is taken whole.
    run_.count = 1;
    while (stepped_ > 0 && stepped_ - 1 != layout.axis()) {
        --stepped_;
        run_.count *= box_.extent[stepped_];
        if (box_.extent[stepped_] != layout.extents()[stepped_])
            break;
    }
}

bool run_walk::next(element_run& run) noexcept {
    if (done_)
        return false;
    run = run_;
    advance();
    return true;
}

void run_walk::advance() noexcept {
    for (auto i = stepped_; i-- > 0;) {
        run_.first += layout_.stride(i);
        if (i == layout_.axis())
            ++run_.row;
        if (++index_[i] < box_.extent[i])
            return;
        index_[i] = 0;
        run_.first -= box_.extent[i] * layout_.stride(i);
        if (i == layout_.axis())
            run_.row -= box_.extent[i];
    }
    done_ = true;
}

} // namespace strata::detail
