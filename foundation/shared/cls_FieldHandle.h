#pragma once

#include <string_view>

/// Names one persistent field of a class, as its metadata declares it ("_x"). Holds a view: the
/// text outlives the handle.
class cls_FieldHandle {
  public:
    constexpr cls_FieldHandle(const char* fieldName) noexcept : name(fieldName) {}
    constexpr cls_FieldHandle(std::string_view fieldName) noexcept : name(fieldName) {}

    [[nodiscard]] constexpr std::string_view Name() const noexcept { return name; }

  private:
    std::string_view name;
};
