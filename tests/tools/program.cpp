#include "tests/tools/program.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

std::string content_of(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<char*> pointers_to(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    std::transform(texts.begin(), texts.end(), std::back_inserter(pointers),
                   [](std::string& text) { return text.data(); });
    pointers.push_back(nullptr);
    return pointers;
}

// Only what the run is given, so that a developer's own settings do not change the outcome.
std::vector<std::string> environment_of(const RunOptions& options) {
    std::vector<std::string> variables;
    for (const char* const kept : {"PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
        if (const char* const value = std::getenv(kept)) {
            variables.push_back(std::string(kept) + '=' + value);
        }
    }
    for (const auto& [name, value] : options.environment) {
        variables.push_back(name + '=' + value);
    }
    return variables;
}

void redirect(const std::string& path, int flags, int stream) {
    const int file = open(path.c_str(), flags, 0600);
    if (file < 0 || dup2(file, stream) < 0) {
        _exit(126);
    }
    close(file);
}

// What the program that is executed next could read against a file's permissions.
void give_up_privileges() {
    for (const unsigned long capability : {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH}) {
        if (prctl(PR_CAPBSET_DROP, capability, 0, 0, 0) != 0) {
            _exit(kCannotGiveUp);
        }
    }
}

void limit(int resource, std::uint64_t most) {
    rlimit both = {};
    if (getrlimit(static_cast<__rlimit_resource_t>(resource), &both) != 0) {
        _exit(126);
    }
    both.rlim_cur = most;
    if (setrlimit(static_cast<__rlimit_resource_t>(resource), &both) != 0) {
        _exit(126);
    }
}

}  // namespace

RunResult run_kivo(const std::vector<std::string>& arguments, const RunOptions& options) {
    const TemporaryFolder folder;
    const std::string in =
        options.input_path.empty() ? folder.write("in", options.input) : options.input_path;
    const std::string out = options.out_path.empty() ? folder.write("out", "") : options.out_path;
    const std::string err = folder.write("err", "");
    std::vector<std::string> words = arguments;
    words.insert(words.begin(), KIVO_PROGRAM);
    std::vector<std::string> variables = environment_of(options);
    const std::vector<char*> argument_pointers = pointers_to(words);
    const std::vector<char*> variable_pointers = pointers_to(variables);

    const pid_t child = fork();
    if (child == 0) {
        if (options.obeys_permissions && geteuid() == 0) {
            give_up_privileges();
        }
        redirect(in, O_RDONLY, STDIN_FILENO);
        redirect(out, O_WRONLY | O_CREAT, STDOUT_FILENO);
        redirect(err, O_WRONLY, STDERR_FILENO);
        if (options.closes_input) {
            close(STDIN_FILENO);
        }
        if (!options.directory.empty() && chdir(options.directory.c_str()) != 0) {
            _exit(126);
        }
        for (const auto& [resource, most] : options.limits) {
            limit(resource, most);
        }
        execve(KIVO_PROGRAM, argument_pointers.data(), variable_pointers.data());
        _exit(127);
    }
    int state = 0;
    if (child < 0 || waitpid(child, &state, 0) != child) {
        throw std::runtime_error("cannot run the program");
    }
    RunResult result;
    result.status = WIFEXITED(state) ? WEXITSTATUS(state) : -1;
    result.out = options.out_path.empty() ? content_of(out) : std::string();
    result.err = content_of(err);
    return result;
}

std::string example(const std::string& name) {
    return std::string(KIVO_EXAMPLES) + '/' + name;
}

std::string with_sections(const std::string& sections) {
    return "<ROOT>\n" + sections + "\n</ROOT>\n";
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> places_in(const std::string& text, const std::string& path) {
    std::vector<std::string> found;
    for (const std::string& line : lines_of(text)) {
        if (line.rfind(path + ':', 0) == 0) {
            found.push_back(line.substr(path.size() + 1));
        }
    }
    return found;
}

std::vector<std::string> messages_in(const std::string& text, const std::string& path) {
    std::vector<std::string> found = places_in(text, path);
    const auto is_note = [](const std::string& line) {
        return line.find_first_not_of("0123456789:") == line.find(" note: ");
    };
    found.erase(std::remove_if(found.begin(), found.end(), is_note), found.end());
    return found;
}
