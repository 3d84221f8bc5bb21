#include "vantrex/tool_handlers/next_steps/own_tables.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/place.h"
#include "vantrex/tool_handlers/next_steps/tables.h"
#include "vantrex/workers/unknown_name.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonField;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;
using values::Text;
using workers::quoted;
using workers::unknown_name;

namespace {

using Names = std::vector<std::string_view>;

// A value of the catalogue and its place.
class At {
 public:
  At(const At& outer, const JsonField& field) noexcept
      : value_(field.value), outer_(&outer), key_(&field.key) {}
  At(const At& outer, std::size_t position) noexcept
      : value_((*outer.value_.list())[position]), outer_(&outer), position_(position) {}
  explicit At(const JsonValue& root) noexcept : value_(root) {}

  const JsonValue& value() const noexcept { return value_; }
  // The key of a member of an object.
  const Text& key() const noexcept { return *key_; }

  [[noreturn]] void fail(const std::string& message) const {
    const std::string place = text_of_place();
    throw CatalogueError(place.empty() ? message : place + ": " + message);
  }

  const JsonObject& object() const {
    if (value_.object() == nullptr) fail("must be an object");
    return *value_.object();
  }
  const JsonList& list() const {
    if (value_.list() == nullptr) fail("must be a list");
    return *value_.list();
  }
  const Text& text() const {
    if (value_.text() == nullptr) fail("must be a string");
    return *value_.text();
  }
  const Text& name() const {
    if (text().empty()) fail("must not be empty");
    return text();
  }

  // Fails if the object has a member that is not in `known`.
  void allow(const Names& known) const {
    for (const JsonField& field : object()) {
      if (std::find(known.begin(), known.end(), field.key.view()) == known.end()) {
        fail(unknown_name("member", field.key.view(), known));
      }
    }
  }

  // The member `key` of the object, or nothing.
  std::optional<At> member(std::string_view key) const {
    const JsonObject& members = object();
    const auto* found = std::find_if(members.begin(), members.end(),
                                     [key](const JsonField& field) { return field.key.view() == key; });
    return found == members.end() ? std::nullopt : std::optional<At>(At(*this, *found));
  }
  At required(std::string_view key) const {
    const auto found = member(key);
    if (!found) fail(quoted(key) + " is missing");
    return *found;
  }

 private:
  // NOLINTNEXTLINE(misc-no-recursion): as deep as the format.
  std::string text_of_place() const {
    if (outer_ == nullptr) return "";
    std::string place = outer_->text_of_place();
    key_ == nullptr ? append_position(place, position_) : append_key(place, key_->view());
    return place;
  }

  const JsonValue& value_;
  const At* outer_ = nullptr;
  const Text* key_ = nullptr;
  std::size_t position_ = 0;
};

// What the calls of one table may take and hold.
struct CallForm {
  Names kinds;    // that a call may take
  Names members;  // that a call may have
  bool has_reason;
};

class Reader {
 public:
  explicit Reader(OwnTables& own) : own_(own) {
    for (const std::string_view name : predefined_kinds()) {
      kinds_.push_back({name, static_cast<ArgumentKind>(kinds_.size())});
    }
  }

  Tables read(const At& root) {
    root.allow({"hit_lists", "counts", "arguments", "next_steps", "signals", "misses"});
    Tables tables{.hit_lists = module_tables().hit_lists, .counts = module_tables().counts};
    if (const auto lists = root.member("hit_lists")) tables.hit_lists = key_paths(*lists);
    if (const auto counts = root.member("counts")) tables.counts = key_paths(*counts);
    if (const auto kinds = root.member("arguments")) own_kinds(*kinds);
    if (const auto usual = root.member("next_steps")) tables.usual = usual_rows(*usual);
    if (const auto signals = root.member("signals")) tables.signals = signal_rows(*signals);
    if (const auto misses = root.member("misses")) {
      misses->allow({"symbol", "path"});
      if (const auto symbol = misses->member("symbol"))
        tables.symbol_miss = miss(*symbol, {"fqn"}, {"query"});
      if (const auto path = misses->member("path")) tables.path_miss = miss(*path, {"path"}, {});
    }
    return tables;
  }

 private:
  // Calls `read(At)` for each member of an object, or each item of a list, and collects the results.
  template <typename Read>
  static auto each_member(const At& object, Read read) {
    std::vector<decltype(read(object))> all;
    for (const JsonField& field : object.object()) all.push_back(read(At(object, field)));
    return all;
  }
  template <typename Read>
  static auto each_item(const At& list, Read read) {
    std::vector<decltype(read(list))> all;
    for (std::size_t place = 0; place < list.list().size(); ++place) all.push_back(read(At(list, place)));
    return all;
  }

  // A key, or a list of keys.
  KeyPath key_path(const At& at) {
    if (at.value().text() != nullptr) return own_.store(Names{at.text().view()});
    if (at.value().list() == nullptr) at.fail("must be a key or a list of keys");
    return own_.store(each_item(at, [](const At& key) { return key.text().view(); }));
  }
  // The same; the list must not be empty.
  KeyPath path_to_field(const At& at) {
    const KeyPath path = key_path(at);
    if (path.empty()) at.fail("must have a key");
    return path;
  }
  std::span<const KeyPath> key_paths(const At& at) {
    return own_.store(each_item(at, [this](const At& path) { return path_to_field(path); }));
  }

  void own_kinds(const At& at) {
    const auto predefined = predefined_kinds();
    for (const JsonField& field : at.object()) {
      const At kind(at, field);
      const std::string_view name = field.key.view();
      if (std::find(predefined.begin(), predefined.end(), name) != predefined.end())
        kind.fail("is predefined");
      kind.allow({"answer", "hit", "request"});
      if (kind.object().empty()) kind.fail(R"(must have "answer", "hit" or "request")");
      const auto sources = each_member(kind, [this](const At& source) { return source_of(source); });
      kinds_.push_back({field.key, ArgumentKind::own, own_.store_one(OwnKind{name, own_.store(sources)})});
    }
  }

  ArgumentSource source_of(const At& at) {
    using In = ArgumentSource::In;
    const std::string_view in = at.key().view();
    if (in == "hit") return {In::hit, key_path(at)};
    return {in == "answer" ? In::answer : In::request, path_to_field(at)};
  }

  // The argument that takes the kind that `at` names.
  Argument argument(const Text& name, const At& at, const CallForm& form) const {
    const std::string_view kind = at.text().view();
    if (form.kinds.empty()) at.fail("this call takes nothing");
    if (std::find(form.kinds.begin(), form.kinds.end(), kind) == form.kinds.end()) {
      at.fail(unknown_name("kind", kind, form.kinds));
    }
    Argument taken = *std::find_if(kinds_.begin(), kinds_.end(),
                                   [kind](const Argument& each) { return kind_name(each) == kind; });
    taken.name = name;
    return taken;
  }

  // What a call takes: a kind, or an object of kinds.
  std::vector<Argument> takes(const At& at, const CallForm& form) const {
    if (at.value().object() != nullptr) {
      return each_member(at, [&](const At& each) { return named_argument(each, form); });
    }
    if (at.value().text() == nullptr) at.fail("must be a kind or an object of kinds");
    const Argument plain = argument(at.text(), at, form);
    if (is_asked(plain.kind)) {
      at.fail("needs the name of an argument: {ARGUMENT: " + quoted(at.text().view()) + "}");
    }
    return {plain};
  }

  Argument named_argument(const At& at, const CallForm& form) const {
    const bool in_list = at.value().list() != nullptr;
    if (in_list && at.list().size() != 1) at.fail("must have one kind");
    Argument named = argument(at.key(), in_list ? At(at, 0) : at, form);
    if (named.kind == ArgumentKind::changed_files) {
      at.fail(R"("changed_files" brings its own arguments: write "takes": "changed_files")");
    }
    named.in_list = in_list;
    return named;
  }

  Call call(const At& at, const CallForm& form) {
    at.allow(form.members);
    Call call{.tool = at.required("tool").name()};
    if (form.has_reason) call.reason = at.required("reason").text();
    const auto args = at.member("args");
    if (args) call.args = &args->object();
    if (const auto taken = at.member("takes")) {
      call.takes = own_.store(takes(*taken, form));
      for (const Argument& each : call.takes) check_not_constant(each, call, *taken);
    }
    return call;
  }

  static void check_not_constant(const Argument& argument, const Call& call, const At& at) {
    Names names{argument.name.view()};
    if (argument.kind == ArgumentKind::changed_files) names.emplace_back("base_branch");
    for (const std::string_view name : names) {
      if (call.args != nullptr && call.args->contains(name)) {
        at.fail("the argument " + quoted(name) + R"( is in "args", too)");
      }
    }
  }

  CallForm form_of_rows(Names members) const {
    Names kinds;
    for (const Argument& each : kinds_) kinds.push_back(kind_name(each));
    return {std::move(kinds), std::move(members), true};
  }

  std::span<const UsualRow> usual_rows(const At& at) {
    const CallForm form = form_of_rows({"tool", "args", "takes", "reason"});
    return own_.store(each_member(at, [&](const At& row) {
      return UsualRow{row.key().view(),
                      own_.store(each_item(row, [&](const At& each) { return call(each, form); }))};
    }));
  }

  std::span<const SignalRow> signal_rows(const At& at) {
    const CallForm form = form_of_rows({"hits", "hits_at_least", "tool", "args", "takes", "reason"});
    return own_.store(each_member(at, [&](const At& row) {
      const bool is_none = row.value().is_null() && split_key(row.key().view()).action;
      return SignalRow{row.key().view(),
                       is_none ? nullptr : own_.store_one(Signal{condition(row), call(row, form)})};
    }));
  }

  static HitCondition condition(const At& at) {
    const auto exactly = at.member("hits");
    const auto at_least = at.member("hits_at_least");
    if (exactly.has_value() == at_least.has_value()) at.fail(R"(must have either "hits" or "hits_at_least")");
    const At& count = exactly ? *exactly : *at_least;
    const auto hits =
        count.value().kind() == Kind::integer ? count.value().integer<std::int64_t>() : std::nullopt;
    if (!hits || *hits < 0) count.fail("must be a number of hits");
    return {*hits, at_least.has_value()};
  }

  // The calls of a miss. The one on the best candidate takes `best`.
  MissCalls miss(const At& at, const Names& best, const Names& to_search) {
    at.allow({"near", "none"});
    const auto call_of = [&](std::string_view key, const Names& kinds) -> const Call* {
      const auto member = at.member(key);
      return member ? own_.store_one(call(*member, {kinds, {"tool", "args", "takes"}, false})) : nullptr;
    };
    return {call_of("near", best), call_of("none", to_search)};
  }

  OwnTables& own_;
  std::vector<Argument> kinds_;  // the predefined ones, then those of the server
};

}  // namespace

OwnTables::OwnTables(JsonObject catalogue)
    : json_(std::move(catalogue)), tables_(Reader(*this).read(At(json_))) {}

}  // namespace vantrex::tool_handlers::next_steps
