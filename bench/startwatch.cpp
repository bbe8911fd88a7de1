// SPDX-License-Identifier: MIT
// startwatch FRAMEBUFFER COLOUR SCROLLED PROGRAM ARGUMENT...
// Starts the program on the display of DISPLAY, whose server keeps its screen in the file FRAMEBUFFER (Xvfb
// -fbdir), and writes as one line of JSON, in ms from exec: when COLOUR stood on the screen, when SCROLLED
// did after a turn of the mouse wheel at once upon that (without the wheel when SCROLLED is "-"), when the
// program came to rest; and its peak memory in kB.
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr int Step = 8;            // pixels between the samples of the screen
constexpr int EnoughSamples = 300; // of a colour: a good part of the window
constexpr int WheelTurns = 12;
constexpr auto RestTime = 300ms; // without work: the program has come to rest
constexpr double LittleWork = 2; // ms of processor time within RestTime
constexpr auto Patience = 20s;

[[noreturn]] void fail(const char* what)
{
    std::perror(what);
    std::exit(1);
}

/// The screen of a virtual X server: an XWD file that the server keeps up to date.
class Screen {
public:
    explicit Screen(const char* name)
    {
        const int fd = ::open(name, O_RDONLY | O_CLOEXEC);
        struct stat status = {};
        if (fd < 0 || ::fstat(fd, &status) != 0) {
            fail(name);
        }
        void* memory = ::mmap(nullptr, size_t(status.st_size), PROT_READ, MAP_SHARED, fd, 0);
        if (memory == MAP_FAILED) {
            fail(name);
        }
        m_bytes = static_cast<const volatile unsigned char*>(memory);
        constexpr uint32_t colourSize = 12;
        m_width = field(4);
        m_height = field(5);
        m_lineSize = field(12);
        m_pixels = field(0) + field(19) * colourSize;
    }

    struct Found {
        int samples = 0;
        int x = 0; ///< somewhere within
        int y = 0;
    };

    [[nodiscard]] Found find(uint32_t colour) const
    {
        Found found;
        long sumX = 0;
        long sumY = 0;
        for (uint32_t y = 0; y < m_height; y += Step) {
            for (uint32_t x = 0; x < m_width; x += Step) {
                if (pixel(x, y) == colour) {
                    ++found.samples;
                    sumX += x;
                    sumY += y;
                }
            }
        }
        if (found.samples > 0) {
            found.x = int(sumX / found.samples);
            found.y = int(sumY / found.samples);
        }
        return found;
    }

private:
    [[nodiscard]] uint32_t field(int number) const
    {
        uint32_t value = 0;
        for (int i = 0; i < 4; ++i) {
            value = value << 8U | m_bytes[number * 4 + i];
        }
        return value;
    }
    [[nodiscard]] uint32_t pixel(uint32_t x, uint32_t y) const
    {
        const auto* p = m_bytes + m_pixels + size_t(y) * m_lineSize + size_t(x) * 4;
        return uint32_t(p[2]) << 16U | uint32_t(p[1]) << 8U | p[0];
    }

    const volatile unsigned char* m_bytes = nullptr;
    uint32_t m_width = 0;
    uint32_t m_height = 0;
    uint32_t m_lineSize = 0;
    uint32_t m_pixels = 0;
};

/// Turns the mouse wheel of the display.
class Wheel {
public:
    Wheel() : m_connection(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_connection) != 0) {
            fail("no display");
        }
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    }

    void point(int x, int y) const
    {
        xcb_test_fake_input(m_connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, m_root, int16_t(x),
                            int16_t(y), 0);
        xcb_flush(m_connection);
    }

    void turn() const
    {
        constexpr uint8_t down = 5;
        for (int i = 0; i < WheelTurns; ++i) {
            xcb_test_fake_input(m_connection, XCB_BUTTON_PRESS, down, XCB_CURRENT_TIME, m_root, 0, 0, 0);
            xcb_test_fake_input(m_connection, XCB_BUTTON_RELEASE, down, XCB_CURRENT_TIME, m_root, 0, 0, 0);
        }
        xcb_flush(m_connection);
    }

private:
    xcb_connection_t* m_connection;
    xcb_window_t m_root = 0;
};

/// Processor time of all threads, in ms.
double work(pid_t process)
{
    double sum = 0;
    std::error_code error;
    const std::string tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks, error)) {
        double nanoseconds = 0;
        std::ifstream(task.path() / "schedstat") >> nanoseconds;
        sum += nanoseconds / 1e6;
    }
    return sum;
}

long peakMemory(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::strtol(line.c_str() + sizeof("VmHWM:"), nullptr, 10);
        }
    }
    return 0;
}

uint32_t colour(const char* text)
{
    return uint32_t(std::strtoul(text + 1, nullptr, 16));
}

/// Looks at the screen until the colour stands there; when that was, nothing after too long a time.
std::optional<Clock::time_point> waitFor(const Screen& screen, uint32_t colour, Clock::time_point start)
{
    while (Clock::now() < start + Patience) {
        if (screen.find(colour).samples >= EnoughSamples) {
            return Clock::now();
        }
        std::this_thread::sleep_for(300us);
    }
    return std::nullopt;
}

Clock::time_point waitForRest(pid_t process, Clock::time_point start)
{
    auto busy = Clock::now();
    double done = work(process);
    while (Clock::now() < busy + RestTime && Clock::now() < start + Patience) {
        std::this_thread::sleep_for(5ms);
        // Threads that have ended take their time with them.
        if (const double now = work(process); now > done + LittleWork || now < done) {
            done = now;
            busy = Clock::now();
        }
    }
    return busy;
}

double sinceStart(std::optional<Clock::time_point> moment, Clock::time_point start)
{
    return moment ? std::chrono::duration<double, std::milli>(*moment - start).count() : -1;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 5) {
        std::fputs("usage: startwatch FRAMEBUFFER COLOUR SCROLLED PROGRAM ARGUMENT...\n", stderr);
        return 2;
    }
    const Screen screen(argv[1]);
    const Wheel wheel;
    wheel.point(0, 0);

    const auto start = Clock::now();
    pid_t process = 0;
    if (posix_spawnp(&process, argv[4], nullptr, nullptr, argv + 4, environ) != 0) {
        fail(argv[4]);
    }
    const auto shown = waitFor(screen, colour(argv[2]), start);
    std::optional<Clock::time_point> scrolled;
    if (shown && std::strcmp(argv[3], "-") != 0) {
        const auto page = screen.find(colour(argv[2]));
        wheel.point(page.x, page.y);
        wheel.turn();
        scrolled = waitFor(screen, colour(argv[3]), start);
    }
    const auto rest = waitForRest(process, start);
    std::printf("{\"shown\": %.2f, \"scrolled\": %.2f, \"rest\": %.2f, \"peak\": %ld}\n",
                sinceStart(shown, start), sinceStart(scrolled, start), sinceStart(rest, start),
                peakMemory(process));
    ::kill(process, SIGTERM);
    ::waitpid(process, nullptr, 0);
    return shown ? 0 : 1;
}
