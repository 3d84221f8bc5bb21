#include "proxy/spliced_line.h"

#include <algorithm>

namespace next_steps_proxy {

std::string spliced_line(std::string_view line, std::vector<NewValue> values) {
  const auto is_before = [](const NewValue& a, const NewValue& b) { return a.old.data() < b.old.data(); };
  std::sort(values.begin(), values.end(), is_before);
  std::string spliced;
  const char* at = line.data();
  for (const NewValue& value : values) {
    spliced.append(at, value.old.data()).append(value.text);
    at = value.old.data() + value.old.size();
  }
  return spliced.append(at, line.data() + line.size());
}

}  // namespace next_steps_proxy
