#include <anvil/status.hpp>

#include <iterator>
#include <utility>

namespace anvil {

status status::failure(std::string message) {
    status result;
    result.messages_.push_back(std::move(message));
    return result;
}

status status::out_of_memory(std::string message) {
    auto result = failure(std::move(message));
    result.out_of_memory_ = true;
    return result;
}

status& status::add(status step) {
    out_of_memory_ = out_of_memory_ || step.out_of_memory_;
    messages_.insert(messages_.end(), std::make_move_iterator(step.messages_.begin()),
                     std::make_move_iterator(step.messages_.end()));
    return *this;
}

std::string status::message(const std::string& separator) const {
    std::string text;
    for (const auto& message : messages_) {
        if (&message != &messages_.front())
            text += separator;
        text += message;
    }
    return text;
}

} // namespace anvil
