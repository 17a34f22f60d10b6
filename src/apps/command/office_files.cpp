#include "apps/command/office_files.h"

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "apps/command/document.h"
#include "apps/command/private_folder.h"

namespace korvane::command {
namespace {

namespace fs = std::filesystem;

// One service, so that one line of configuration starts the conversation.
constexpr std::string_view kComponents = R"(<?xml version="1.0" encoding="UTF-8"?>
<components xmlns="http://openoffice.org/2010/uno-components">
  <component loader="com.sun.star.loader.SharedLibrary" environment="gcc3" uri="@">
    <implementation name="org.korvane.office.Job" constructor="korvane_office_job">
      <service name="org.korvane.office.Job"/>
    </implementation>
  </component>
</components>
)";

constexpr std::string_view kJobs = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Jobs" oor:package="org.openoffice.Office">
  <node oor:name="Jobs">
    <node oor:name="Korvane" oor:op="replace">
      <prop oor:name="Service"><value>org.korvane.office.Job</value></prop>
    </node>
  </node>
  <node oor:name="Events">
    <node oor:name="OnStartApp" oor:op="fuse">
      <node oor:name="JobList">
        <node oor:name="Korvane" oor:op="replace"/>
      </node>
    </node>
  </node>
</oor:component-data>
)";

// Nothing of a workbook runs, is fetched or is asked for: macros, Java, links,
// a crash report, the updater.
constexpr std::string_view kCommon = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Common" oor:package="org.openoffice.Office">
  <node oor:name="Security">
    <node oor:name="Scripting">
      <prop oor:name="MacroSecurityLevel"><value>3</value></prop>
      <prop oor:name="DisableMacrosExecution"><value>true</value></prop>
      <prop oor:name="BlockUntrustedRefererLinks"><value>true</value></prop>
    </node>
  </node>
  <node oor:name="Misc">
    <prop oor:name="UseOpenCL"><value>false</value></prop>
    <prop oor:name="FirstRun"><value>false</value></prop>
  </node>
</oor:component-data>
)";

constexpr std::string_view kJava = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Java" oor:package="org.openoffice.Office">
  <node oor:name="VirtualMachine">
    <prop oor:name="Enable" oor:op="fuse"><value>false</value></prop>
  </node>
</oor:component-data>
)";

// References in texts, as INDIRECT reads them, are Excel's where the workbook does
// not say otherwise.
constexpr std::string_view kCalc = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Calc" oor:package="org.openoffice.Office">
  <node oor:name="Content">
    <node oor:name="Update">
      <prop oor:name="Link"><value>2</value></prop>
    </node>
  </node>
  <node oor:name="Formula">
    <node oor:name="Syntax">
      <prop oor:name="Grammar"><value>1</value></prop>
      <prop oor:name="StringRefAddressSyntax"><value>1</value></prop>
    </node>
  </node>
</oor:component-data>
)";

bool HasOffice(const fs::path& program) {
    std::error_code failed;
    return fs::is_regular_file(program / "soffice.bin", failed);
}

// The office's own configuration and ours, then the private profile's; neither
// the user's profile nor extensions nor the desktop's settings.
std::string ConfigurationLayers(const fs::path& program, const PrivateFolder& folder) {
    std::string layers;
    std::istringstream usual(StartupValue(program / "fundamentalrc", "CONFIGURATION_LAYERS"));
    for (std::string layer; usual >> layer;) {
        if (layer.starts_with("xcsxcu:") || layer.starts_with("res:")) layers += layer + ' ';
    }
    if (layers.empty())
        layers = "xcsxcu:${BRAND_BASE_DIR}/share/registry res:${BRAND_BASE_DIR}/share/registry ";
    layers += "xcsxcu:" + FileUrl(folder.path() / "config") + ' ';
    return layers + "user:!" + FileUrl(folder.path() / "profile/user/registrymodifications.xcu");
}

std::string Replaced(std::string_view text, const std::string& with) {
    std::string out(text);
    return out.replace(out.find('@'), 1, with);
}

}  // namespace

std::string StartupValue(const fs::path& file, std::string_view key) {
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        if (line.size() > key.size() && line[key.size()] == '=' &&
            line.compare(0, key.size(), key) == 0) {
            return line.substr(key.size() + 1);
        }
    }
    return {};
}

fs::path FindOffice() {
    const char* const named = std::getenv("KORVANE_OFFICE");
    if (named != nullptr && *named != '\0') {
        for (const fs::path& folder : {fs::path(named), fs::path(named) / "program"}) {
            if (HasOffice(folder)) return fs::absolute(folder);
        }
        throw CommandError(kHostLost, std::string("KORVANE_OFFICE names no LibreOffice: ") + named);
    }
    for (const char* const folder :
         {"/usr/lib/libreoffice/program", "/usr/lib64/libreoffice/program",
          "/opt/libreoffice/program"}) {
        if (HasOffice(folder)) return folder;
    }
    throw CommandError(kHostLost,
                       "LibreOffice Calc is not installed: install libreoffice-calc, or set "
                       "KORVANE_OFFICE to the folder of its installation.");
}

fs::path FindComponent() {
    std::error_code failed;
    const fs::path self = fs::read_symlink("/proc/self/exe", failed);
    const fs::path component =
        self.parent_path().parent_path() / "lib/korvane/libkorvane-office.so";
    if (!failed && fs::exists(component, failed)) return component;
    throw CommandError(kHostLost, "The installation is incomplete: " + component.string() +
                                      " is missing. Build or install korvane again.");
}

std::vector<std::string> PrepareOffice(const PrivateFolder& folder, const fs::path& program,
                                       const fs::path& component) {
    folder.Write("korvane.components", Replaced(kComponents, FileUrl(component)));
    const fs::path data = "config/data/org/openoffice/Office";
    folder.Write(data / "Jobs.xcu", kJobs);
    folder.Write(data / "Common.xcu", kCommon);
    folder.Write(data / "Java.xcu", kJava);
    folder.Write(data / "Calc.xcu", kCalc);
    // A profile without this mark is taken for one of another version: the first
    // start would only clean it up, end, and want to be started again.
    folder.Write("profile/user/extensions/buildid", StartupValue(program / "versionrc", "buildid"));
    std::error_code failed;
    fs::create_directories(folder.path() / "tmp", failed);
    // What is installed for all users would first be taken into the new profile:
    // that costs time, and the office then ends, to be started again, at a moment
    // of its own choosing.
    const std::string noExtensions = FileUrl(folder.path() / "no-extensions");

    return {(program / "soffice.bin").string(),
            "--headless",
            "--norestore",
            "--nologo",
            "--nodefault",
            "--nolockcheck",
            "--nofirststartwizard",
            "-env:UserInstallation=" + FileUrl(folder.path() / "profile"),
            "-env:URE_MORE_SERVICES=" + FileUrl(folder.path() / "korvane.components") + " <" +
                FileUrl(program / "services") + ">*",
            "-env:CONFIGURATION_LAYERS=" + ConfigurationLayers(program, folder),
            "-env:BUNDLED_EXTENSIONS=" + noExtensions,
            "-env:UNO_SHARED_PACKAGES_CACHE=" + noExtensions};
}

std::vector<std::string> OfficeEnvironment(const PrivateFolder& folder) {
    const auto value = [](const char* name) {
        const char* const text = std::getenv(name);
        return std::string_view(text == nullptr ? "" : text);
    };
    const std::string_view locale = !value("LC_ALL").empty()     ? value("LC_ALL")
                                    : !value("LC_CTYPE").empty() ? value("LC_CTYPE")
                                                                 : value("LANG");
    // The office turns file names into bytes by the locale; ours are UTF-8.
    const bool utf8 = locale.find("UTF-8") != std::string_view::npos ||
                      locale.find("utf8") != std::string_view::npos;

    std::vector<std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string_view variable = *entry;
        const auto is = [&](std::string_view name) {
            return variable.starts_with(name) && variable.substr(name.size()).starts_with('=');
        };
        if (is("TMPDIR") || is("DISPLAY") || is("WAYLAND_DISPLAY") || is("SAL_USE_VCLPLUGIN"))
            continue;
        if (!utf8 && (is("LC_ALL") || is("LC_CTYPE"))) continue;
        variables.emplace_back(variable);
    }
    if (!utf8) variables.emplace_back("LC_CTYPE=C.UTF-8");
    variables.push_back("TMPDIR=" + (folder.path() / "tmp").string());
    variables.push_back("KORVANE_FOLDER=" + folder.path().string());
    variables.emplace_back("SAL_USE_VCLPLUGIN=svp");  // draws nowhere
    variables.emplace_back("SAL_DISABLE_OPENCL=1");   // its start-up test costs a process
    return variables;
}

}  // namespace korvane::command
