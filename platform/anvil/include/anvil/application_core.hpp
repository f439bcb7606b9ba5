// What any program needs of its system.
//
// | file                   |                                                    |
// |------------------------|----------------------------------------------------|
// | application_core       | who the program is                                 |
// | status                 | success, or why not                                |
// | io_device              | bytes from somewhere, to somewhere                 |
// | io_file                | a file, which is replaced as a whole or not at all |
// | io_memory              | bytes in memory                                    |
// | path_text              | paths as texts and back                            |
// | on_fork                | what goes before and after a fork                  |
// | standard_paths         | folders of the system                              |
// | module_path            | the file that code was loaded from                 |
// | logging                | lines, loggers and where lines end up              |
// | log_sink_file_threaded | a file of lines                                    |
// | json                   | JSON                                               |

#pragma once

#include <string>

#include <anvil/export.hpp>

namespace anvil {

/// Identity of the running program. The first one constructed is the process's instance until it is
/// destroyed.
class ANVIL_EXPORT application_core {
  public:
    /// Until a name is set, the program's own, the first of `arguments` without folder and
    /// extension, is the application's name; empty when there are no arguments.
    application_core(int argument_count, char** arguments);
    application_core(const application_core&) = delete;
    application_core& operator=(const application_core&) = delete;
    virtual ~application_core();

    /// The process's application, or null while there is none.
    [[nodiscard]] static application_core* instance() noexcept;

    void set_organization_name(std::string name);
    void set_organization_domain(std::string domain);
    void set_application_name(std::string name);
    void set_application_version(std::string version);

    [[nodiscard]] const std::string& organization_name() const noexcept {
        return organization_name_;
    }
    [[nodiscard]] const std::string& organization_domain() const noexcept {
        return organization_domain_;
    }
    [[nodiscard]] const std::string& application_name() const noexcept { return application_name_; }
    [[nodiscard]] const std::string& application_version() const noexcept {
        return application_version_;
    }

  private:
    std::string organization_name_;
    std::string organization_domain_;
    std::string application_name_;
    std::string application_version_;
};

} // namespace anvil
