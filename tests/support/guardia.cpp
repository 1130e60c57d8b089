// guardia COMMAND [ARGUMENTS…]: runs a test so that nothing of it is left when it ends, however it ends.
// The test gets a temporary folder of its own and a process group of its own, and dies with whoever started
// it. Who is killed cannot clean up: another process waits for its end, then ends every process that was
// given that folder (servers and screens that had left the group too) and removes the folder. Ends with what
// the command ends with; 125 where it cannot be guarded.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int sin_guardia = 125;

std::string todo(const fs::path& fichero)
{
    std::ifstream entrada(fichero, std::ios::binary);
    return { std::istreambuf_iterator<char>(entrada), {} };
}

/// Whether the process was started with that folder for temporary files, or by one that was.
bool es_de(const fs::path& proceso, const std::string& carpeta)
{
    const std::string marca = '\0' + ("TMPDIR=" + carpeta) + '\0';
    return ('\0' + todo(proceso / "environ")).find(marca) != std::string::npos;
}

std::vector<pid_t> los_de(const std::string& carpeta)
{
    std::vector<pid_t> suyos;
    std::error_code da_igual; // processes come and go while they are looked at
    for (fs::directory_iterator uno("/proc", da_igual), fin; uno != fin; uno.increment(da_igual)) {
        const auto nombre = uno->path().filename().string();
        if (std::all_of(nombre.begin(), nombre.end(), [](char c) { return c >= '0' && c <= '9'; })
            && es_de(uno->path(), carpeta))
            suyos.push_back(std::atoi(nombre.c_str()));
    }
    return suyos;
}

/// The signal at which a process gives back what would outlive it: shared memory, the number of a screen.
int aviso_a(pid_t proceso)
{
    const auto nombre = todo("/proc/" + std::to_string(proceso) + "/comm");
    if (nombre.starts_with("postgres"))
        return SIGQUIT; // ends at once; at SIGTERM it would wait for its clients
    return nombre.starts_with("Xvfb") ? SIGTERM : SIGKILL;
}

void acaba_con(const std::string& carpeta)
{
    constexpr int vueltas = 200;
    constexpr int sin_mas = 100; // of those turns: then whoever was only asked is killed
    for (int vuelta = 0; vuelta < vueltas; ++vuelta) {
        const auto quedan = los_de(carpeta);
        if (quedan.empty())
            return;
        for (const auto uno : quedan)
            if (const int aviso = aviso_a(uno); vuelta == 0 || vuelta >= sin_mas || aviso == SIGKILL)
                kill(uno, vuelta >= sin_mas ? SIGKILL : aviso);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
}

/// What the other process does.
[[noreturn]] void vigila(int prueba, pid_t proceso, pid_t grupo, const std::string& carpeta)
{
    const int nada = open("/dev/null", O_RDWR);
    for (const int flujo : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
        dup2(nada, flujo); // or whoever reads them would wait for this process too
    for (const int aviso : { SIGHUP, SIGINT, SIGTERM })
        std::signal(aviso, SIG_IGN);
    pollfd fin{ prueba, POLLIN, 0 };
    if (prueba < 0) { // a system without descriptors of processes
        while (kill(proceso, 0) == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    while (prueba >= 0 && poll(&fin, 1, -1) < 0 && errno == EINTR) { }
    kill(-grupo, SIGKILL);
    acaba_con(carpeta);
    std::error_code da_igual;
    fs::remove_all(carpeta, da_igual);
    _exit(EXIT_SUCCESS);
}

[[noreturn]] void no_puede(const char* que)
{
    std::perror(que);
    std::exit(sin_guardia);
}

}

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("guardia COMMAND [ARGUMENTS…]\n", stderr);
        return sin_guardia;
    }
    std::string carpeta = (fs::temp_directory_path() / "atipicos-prueba-XXXXXX").string();
    // A server that is run by another user has its folder in it.
    if (mkdtemp(carpeta.data()) == nullptr || chmod(carpeta.c_str(), S_IRWXU | S_IXGRP | S_IXOTH) != 0)
        no_puede(carpeta.c_str());
    const int yo = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
    if (yo >= 0)
        fcntl(yo, F_SETFD, FD_CLOEXEC);
    const pid_t proceso = getpid();
    setpgid(0, 0); // refused to the leader of a session, which has a group of its own
    const pid_t grupo = getpgrp();
    const pid_t intermedio = fork();
    if (intermedio < 0)
        no_puede("fork");
    if (intermedio == 0) {
        // Nobody's child: who kills a test and all its children does not find it.
        setsid();
        if (fork() == 0)
            vigila(yo, proceso, grupo, carpeta);
        _exit(EXIT_SUCCESS);
    }
    waitpid(intermedio, nullptr, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setenv("TMPDIR", carpeta.c_str(), 1);
    execvp(argv[1], argv + 1);
    std::perror(argv[1]);
    return sin_guardia;
}
