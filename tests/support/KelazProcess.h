#pragma once

// The kelaz program running beside a test: its input fed line by line through a pipe or typed
// at a pseudo-terminal, its output read while it runs, and signals sent to it.
//   KelazProcess shell({"shell", "--drawing", "plan.kdw"}, dir, KelazProcess::Input::kTerminal);
//   ASSERT_TRUE(shell.WaitFor("命令: "));
//   shell.Write("ARC\r");

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace kelaz::test {

class KelazProcess {
public:
    enum class Input { kPipe, kTerminal };
    enum class Output { kCaptured, kDiscarded };

    KelazProcess(const std::vector<std::string>& args, const std::filesystem::path& cwd,
                 Input input, Output output = Output::kCaptured,
                 std::vector<std::pair<std::string, std::string>> env = {}) {
        std::vector<std::string> argv = {KELAZ_EXE};
        argv.insert(argv.end(), args.begin(), args.end());
        int toChild[2] = {-1, -1};
        int fromChild[2] = {-1, -1};
        if (input == Input::kTerminal) {
            m_pid = forkpty(&m_in, nullptr, nullptr, nullptr);
            m_out = m_in;
        } else {
            if (pipe(toChild) != 0 || pipe(fromChild) != 0) return;
            m_pid = fork();
        }
        if (m_pid == 0) {
            if (input == Input::kPipe) {
                dup2(toChild[0], 0);
                dup2(fromChild[1], 1);
                dup2(fromChild[1], 2);
                close(toChild[1]);
                close(fromChild[0]);
            }
            if (output == Output::kDiscarded) {
                const int null = open("/dev/null", O_WRONLY);
                dup2(null, 1);
                dup2(null, 2);
            }
            for (const auto& [name, value] : env) setenv(name.c_str(), value.c_str(), 1);
            if (chdir(cwd.c_str()) != 0) _exit(127);
            std::vector<char*> raw;
            for (std::string& a : argv) raw.push_back(a.data());
            raw.push_back(nullptr);
            execv(raw[0], raw.data());
            _exit(127);
        }
        if (input == Input::kPipe) {
            close(toChild[0]);
            close(fromChild[1]);
            m_in = toChild[1];
            m_out = fromChild[0];
        }
        fcntl(m_out, F_SETFL, fcntl(m_out, F_GETFL) | O_NONBLOCK);
    }

    ~KelazProcess() {
        if (m_pid > 0 && !m_waited) {
            kill(m_pid, SIGKILL);
            Wait();
        }
        if (m_in >= 0) close(m_in);
        if (m_out >= 0 && m_out != m_in) close(m_out);
    }
    KelazProcess(const KelazProcess&) = delete;
    KelazProcess& operator=(const KelazProcess&) = delete;

    bool Started() const { return m_pid > 0; }
    pid_t Pid() const { return m_pid; }

    // At a terminal: waits until the line editor reads keys one by one (it has left the
    // terminal's own line mode), so that a control key typed now reaches it and is not taken by
    // the terminal's line discipline, as a key typed ahead of the prompt would be.
    bool WaitForKeys(int timeoutMs = 20000) {
        const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
        while (std::chrono::steady_clock::now() < until) {
            termios modes{};
            if (tcgetattr(m_in, &modes) == 0 && (modes.c_lflag & ICANON) == 0) return true;
            ReadSome(10);
        }
        return false;
    }

    void Write(const std::string& text) {
        for (size_t done = 0; done < text.size();) {
            const ssize_t n = write(m_in, text.data() + done, text.size() - done);
            if (n <= 0) return;
            done += static_cast<size_t>(n);
        }
    }
    void CloseInput() {
        if (m_in >= 0 && m_in != m_out) close(m_in);
        if (m_in != m_out) m_in = -1;
    }

    // Reads the output until needle appears after what earlier waits consumed; the output up to
    // and including it is consumed. False when it does not come within the time.
    bool WaitFor(const std::string& needle, int timeoutMs = 20000) {
        const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
        while (true) {
            const size_t at = m_output.find(needle, m_consumed);
            if (at != std::string::npos) {
                m_consumed = at + needle.size();
                return true;
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                until - std::chrono::steady_clock::now());
            if (left.count() <= 0 || !ReadSome(static_cast<int>(left.count()))) return false;
        }
    }
    // Everything read so far.
    const std::string& Output() const { return m_output; }

    void Signal(int signo) { kill(m_pid, signo); }
    // The wait status once the program has ended; reads what it still wrote.
    int Wait() {
        if (m_waited) return m_status;
        while (ReadSome(100)) {
        }
        waitpid(m_pid, &m_status, 0);
        m_waited = true;
        while (ReadSome(0)) {
        }
        return m_status;
    }
    // True, with the status, when the program has ended by itself.
    bool Ended(int& status) {
        if (!m_waited && waitpid(m_pid, &m_status, WNOHANG) == m_pid) m_waited = true;
        status = m_status;
        return m_waited;
    }

private:
    bool ReadSome(int timeoutMs) {
        pollfd p{m_out, POLLIN, 0};
        if (m_out < 0 || poll(&p, 1, timeoutMs) <= 0) return false;
        char buf[4096];
        const ssize_t n = read(m_out, buf, sizeof buf);
        if (n <= 0) return false;
        m_output.append(buf, static_cast<size_t>(n));
        return true;
    }

    pid_t m_pid = -1;
    int m_in = -1;
    int m_out = -1;
    bool m_waited = false;
    int m_status = 0;
    std::string m_output;
    size_t m_consumed = 0;
};

}  // namespace kelaz::test
