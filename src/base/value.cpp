#include "base/value.h"

namespace korvane {

Value::Value(Array array) : held_(std::make_shared<const Array>(std::move(array))) {}

const Array* Value::AsArray() const {
    const auto* held = std::get_if<std::shared_ptr<const Array>>(&held_);
    return held ? held->get() : nullptr;
}

ObjectPtr Value::AsObject() const {
    const auto* held = std::get_if<ObjectPtr>(&held_);
    return held ? *held : nullptr;
}

}  // namespace korvane
