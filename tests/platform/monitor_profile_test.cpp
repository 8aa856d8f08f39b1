#include "platform/monitor_profile.h"

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "support/temp_dir.h"

namespace ml::platform {
namespace {

using std::chrono::milliseconds;

constexpr const char* kService = "org.freedesktop.ColorManager";

struct Display {
  std::string path;
  const char* priority = "secondary";
  std::vector<std::string> profiles;  ///< names of files, the one in use first
};

constexpr const char* kInterfaces = R"(<node>
<interface name='org.freedesktop.ColorManager'><method name='GetDevicesByKind'>
<arg type='s' direction='in'/><arg type='ao' direction='out'/></method></interface>
<interface name='org.freedesktop.ColorManager.Device'>
<property name='Profiles' type='ao' access='read'/><property name='Metadata' type='a{ss}' access='read'/></interface>
<interface name='org.freedesktop.ColorManager.Profile'>
<property name='Filename' type='s' access='read'/></interface></node>)";

/// The colour service on a bus of its own, on a thread of its own.
class FakeColourService {
 public:
  explicit FakeColourService(std::vector<Display> displays) : displays_(std::move(displays)) {
    bus_ = g_test_dbus_new(G_TEST_DBUS_NONE);
    g_test_dbus_up(bus_);
    context_ = g_main_context_new();
    thread_ = std::thread([this] { Serve(); });
    while (!ready_) std::this_thread::yield();
  }
  ~FakeColourService() {
    stop_ = true;
    g_main_context_wakeup(context_);
    thread_.join();
    g_main_context_unref(context_);
    g_test_dbus_stop(bus_);
    g_object_unref(bus_);
  }
  std::string Address() const { return g_test_dbus_get_bus_address(bus_); }

 private:
  void Serve() {
    g_main_context_push_thread_default(context_);
    auto* connection = g_dbus_connection_new_for_address_sync(
        Address().c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr);
    auto* node = g_dbus_node_info_new_for_xml(kInterfaces, nullptr);
    Register(connection, "/org/freedesktop/ColorManager", node->interfaces[0]);
    for (const auto& display : displays_) {
      Register(connection, display.path, node->interfaces[1]);
      for (std::size_t i = 0; i < display.profiles.size(); ++i) {
        files_[ProfilePath(display, i)] = display.profiles[i];
        Register(connection, ProfilePath(display, i), node->interfaces[2]);
      }
    }
    g_variant_unref(g_dbus_connection_call_sync(connection, "org.freedesktop.DBus", "/", "org.freedesktop.DBus",
                                                "RequestName", g_variant_new("(su)", kService, 0U), nullptr,
                                                G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
    ready_ = true;
    while (!stop_) g_main_context_iteration(context_, TRUE);
    g_dbus_connection_close_sync(connection, nullptr, nullptr);
    g_dbus_node_info_unref(node);
    g_object_unref(connection);
    g_main_context_pop_thread_default(context_);
  }
  void Register(GDBusConnection* connection, const std::string& path, GDBusInterfaceInfo* interface) {
    static const GDBusInterfaceVTable table = {&Method, &Property, nullptr, {}};
    g_dbus_connection_register_object(connection, path.c_str(), interface, &table, this, nullptr, nullptr);
  }
  static std::string ProfilePath(const Display& display, std::size_t index) {
    return display.path + "_profile" + std::to_string(index);
  }

  static void Method(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* arguments,
                     GDBusMethodInvocation* invocation, gpointer self) {
    const char* kind = nullptr;
    g_variant_get(arguments, "(&s)", &kind);
    GVariantBuilder paths;
    g_variant_builder_init(&paths, G_VARIANT_TYPE("ao"));
    for (const auto& display : static_cast<FakeColourService*>(self)->displays_) {
      if (std::string_view(kind) == "display") g_variant_builder_add(&paths, "o", display.path.c_str());
    }
    g_dbus_method_invocation_return_value(invocation, g_variant_new("(ao)", &paths));
  }
  static GVariant* Property(GDBusConnection*, const char*, const char* path, const char*, const char* name, GError**,
                            gpointer self) {
    auto* service = static_cast<FakeColourService*>(self);
    if (std::string_view(name) == "Filename") return g_variant_new_string(service->files_[path].c_str());
    for (const auto& display : service->displays_) {
      if (display.path != path) continue;
      GVariantBuilder builder;
      if (std::string_view(name) == "Metadata") {
        g_variant_builder_init(&builder, G_VARIANT_TYPE("a{ss}"));
        g_variant_builder_add(&builder, "{ss}", "OutputPriority", display.priority);
        return g_variant_builder_end(&builder);
      }
      g_variant_builder_init(&builder, G_VARIANT_TYPE("ao"));
      for (std::size_t i = 0; i < display.profiles.size(); ++i) {
        g_variant_builder_add(&builder, "o", ProfilePath(display, i).c_str());
      }
      return g_variant_builder_end(&builder);
    }
    return nullptr;
  }

  std::vector<Display> displays_;
  std::map<std::string, std::string> files_;
  GTestDBus* bus_ = nullptr;
  GMainContext* context_ = nullptr;
  std::thread thread_;
  std::atomic<bool> ready_ = false, stop_ = false;
};

TEST(MonitorProfile, IsThatOfThePrimaryScreenOrElseOfTheFirstThatHasOne) {
  struct Case {
    std::vector<Display> displays;
    std::string profile;
  };
  const Display none{.path = "/a", .priority = "primary", .profiles = {}},
      second{.path = "/b", .profiles = {"/icc/b.icc", "/icc/other.icc"}},
      primary{.path = "/c", .priority = "primary", .profiles = {"/icc/c.icc"}},
      nameless{.path = "/d", .priority = "primary", .profiles = {""}};
  const Case cases[] = {{{}, ""},
                        {{none}, ""},
                        {{second}, "/icc/b.icc"},
                        {{second, primary}, "/icc/c.icc"},
                        {{none, nameless, second}, "/icc/b.icc"}};
  for (const auto& c : cases) {
    const FakeColourService service(c.displays);
    EXPECT_EQ(AskForMonitorProfile(service.Address(), milliseconds(10'000)), c.profile);
  }
}

TEST(MonitorProfile, IsEmptyWithoutService) {
  const test::TempDir dir;
  EXPECT_EQ(AskForMonitorProfile("", milliseconds(10'000)), "");
  EXPECT_EQ(AskForMonitorProfile("no address", milliseconds(10'000)), "");
  EXPECT_EQ(AskForMonitorProfile("unix:path=" + (dir / "gone"), milliseconds(10'000)), "");
}

/// A bus that takes the connection and then says nothing: without the limit the question would never end.
TEST(MonitorProfile, IsEmptyWhereNobodyAnswers) {
  const test::TempDir dir;
  const auto path = dir / "bus";
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path.size(), sizeof address.sun_path);
  path.copy(address.sun_path, path.size());
  const int listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(::bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(listening, 1), 0);
  EXPECT_EQ(AskForMonitorProfile("unix:path=" + path, milliseconds(50)), "");
  ::close(listening);
}

}  // namespace
}  // namespace ml::platform
