// A thread with a small stack, and a value too deep for recursion on it.
#pragma once

#include <cstddef>
#include <pthread.h>
#include <utility>

#include <gtest/gtest.h>

#include "vantrex/values/json_value.h"

namespace vantrex::tests {

// Runs `operation` on a new thread with a stack of 256 KiB.
inline void on_a_small_stack(void (*operation)()) {
  pthread_attr_t attributes;
  pthread_t thread{};
  const auto run = [](void* argument) -> void* {
    (*static_cast<void (**)()>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{256} << 10), 0);
  ASSERT_EQ(pthread_create(&thread, &attributes, run, static_cast<void*>(&operation)), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  pthread_attr_destroy(&attributes);
}

constexpr std::size_t kLevels = 1'000'000;

// Nested lists and objects in turn: [{"a":[{"a":leaf}]}].
inline values::JsonValue deep_value(values::JsonValue leaf) {
  for (std::size_t level = 0; level < kLevels; level += 2)
    leaf = values::JsonList::of(values::JsonObject{{"a", std::move(leaf)}});
  return leaf;
}

}  // namespace vantrex::tests
