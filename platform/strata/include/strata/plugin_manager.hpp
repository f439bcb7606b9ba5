#pragma once

#include <memory>
#include <string>

#include <strata/export.hpp>

namespace strata {

namespace detail {
class loaded_plugin;
class registrations;
} // namespace detail

/// Refers to one loaded plugin; does not keep it loaded.
class STRATA_EXPORT plugin_handle {
  public:
    plugin_handle();
    ~plugin_handle();
    plugin_handle(const plugin_handle&);
    plugin_handle& operator=(const plugin_handle&);

    /// Path that the plugin was loaded from; empty for a handle that nothing was loaded into.
    [[nodiscard]] const std::string& path() const noexcept { return path_; }

  private:
    friend class plugin_manager;
    std::string path_;
};

/// Owns the loaded plugins and what they registered. The importers, exporters and callable units of
/// every manager alive serve the whole process, in order of registration.
class STRATA_EXPORT plugin_manager {
  public:
    plugin_manager();
    plugin_manager(const plugin_manager&) = delete;
    plugin_manager& operator=(const plugin_manager&) = delete;
    /// As clear().
    ~plugin_manager();

    /// Loads the plugin file `path` (UTF-8) and registers what it offers. A file that is loaded
    /// already is not loaded again and counts as success. False, with a line in the log that names
    /// the file and the reason, for a file that cannot be read, is no plugin, speaks another
    /// interface version, registers an id that is taken, or fails to register. `handle` may be
    /// null.
    bool load(plugin_handle* handle, const std::string& path);

    /// Drops every registration of this manager and unloads its files, each once nothing of it is
    /// in use.
    void clear();

  private:
    std::unique_ptr<detail::registrations> registrations_;
};

} // namespace strata
