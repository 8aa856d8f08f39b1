#include "platform/monitor_profile.h"

#include <gio/gio.h>

#include <future>
#include <memory>
#include <string_view>
#include <vector>

namespace ml::platform {
namespace {

constexpr const char* kService = "org.freedesktop.ColorManager";
constexpr const char* kServicePath = "/org/freedesktop/ColorManager";
constexpr const char* kDevice = "org.freedesktop.ColorManager.Device";
constexpr const char* kProfile = "org.freedesktop.ColorManager.Profile";

struct ObjectDeleter {
  void operator()(gpointer object) const { g_object_unref(object); }
};
struct VariantDeleter {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using Connection = std::unique_ptr<GDBusConnection, ObjectDeleter>;
using Cancellable = std::unique_ptr<GCancellable, ObjectDeleter>;
using Variant = std::unique_ptr<GVariant, VariantDeleter>;  ///< null for no answer

/// One question to the service, step by step. A step that fails gives nothing.
class ColourService {
 public:
  ColourService(const std::string& address, GCancellable* cancellable, std::chrono::milliseconds limit)
      : cancellable_(cancellable), limit_(static_cast<int>(limit.count())) {
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    bus_.reset(g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, cancellable, /*error*/ nullptr));
  }

  /// Object paths of the screens, in the service's order.
  std::vector<std::string> Displays() const {
    const auto answer =
        Call(kServicePath, kService, "GetDevicesByKind", g_variant_new("(s)", "display"), G_VARIANT_TYPE("(ao)"));
    return answer ? Paths(Variant(g_variant_get_child_value(answer.get(), 0)).get()) : std::vector<std::string>();
  }

  bool IsPrimary(const std::string& device) const {
    const auto metadata = Property(device, kDevice, "Metadata", G_VARIANT_TYPE("a{ss}"));
    const char* priority = nullptr;
    return metadata && g_variant_lookup(metadata.get(), "OutputPriority", "&s", &priority) &&
           std::string_view(priority) == "primary";
  }

  /// The file of the device's profile, which is the first of them; empty if it has none.
  std::string ProfileFile(const std::string& device) const {
    const auto profiles = Property(device, kDevice, "Profiles", G_VARIANT_TYPE("ao"));
    if (!profiles) return {};
    const auto paths = Paths(profiles.get());
    if (paths.empty()) return {};
    const auto name = Property(paths.front(), kProfile, "Filename", G_VARIANT_TYPE("s"));
    return name ? g_variant_get_string(name.get(), nullptr) : "";
  }

 private:
  static std::vector<std::string> Paths(GVariant* array) {
    std::vector<std::string> result;
    for (gsize i = 0; i < g_variant_n_children(array); ++i) {
      const Variant path(g_variant_get_child_value(array, i));
      result.emplace_back(g_variant_get_string(path.get(), nullptr));
    }
    return result;
  }

  Variant Call(const char* object, const char* interface, const char* method, GVariant* arguments,
               const GVariantType* reply) const {
    const Variant owned(g_variant_ref_sink(arguments));
    if (!bus_) return nullptr;
    // Not started for our sake: a service that nobody runs knows of no screen.
    return Variant(g_dbus_connection_call_sync(bus_.get(), kService, object, interface, method, owned.get(), reply,
                                               G_DBUS_CALL_FLAGS_NO_AUTO_START, limit_, cancellable_, nullptr));
  }

  Variant Property(const std::string& object, const char* interface, const char* name, const GVariantType* type) const {
    const auto answer = Call(object.c_str(), "org.freedesktop.DBus.Properties", "Get",
                             g_variant_new("(ss)", interface, name), G_VARIANT_TYPE("(v)"));
    if (!answer) return nullptr;
    GVariant* value = nullptr;
    g_variant_get(answer.get(), "(v)", &value);
    Variant result(value);
    return g_variant_is_of_type(value, type) ? std::move(result) : nullptr;
  }

  GCancellable* cancellable_;
  int limit_;
  Connection bus_;
};

std::string Ask(const ColourService& service) {
  std::string first;
  for (const auto& display : service.Displays()) {
    auto file = service.ProfileFile(display);
    if (file.empty()) continue;
    if (service.IsPrimary(display)) return file;
    if (first.empty()) first = std::move(file);
  }
  return first;
}

std::string SystemBus() {
  const std::unique_ptr<char, decltype(&g_free)> address(
      g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr), &g_free);
  return address ? address.get() : "";
}

}  // namespace

const std::string& SystemMonitorProfile() {
  static const std::string profile = AskForMonitorProfile(SystemBus(), std::chrono::milliseconds(300));
  return profile;
}

std::string AskForMonitorProfile(const std::string& address, std::chrono::milliseconds limit) {
  if (address.empty()) return {};
  const Cancellable cancellable(g_cancellable_new());
  // On a thread of its own, since a bus that hangs can only be left by cancelling from outside.
  auto answer = std::async(std::launch::async, [&] { return Ask(ColourService(address, cancellable.get(), limit)); });
  if (answer.wait_for(limit) == std::future_status::timeout) g_cancellable_cancel(cancellable.get());
  return answer.get();
}

}  // namespace ml::platform
