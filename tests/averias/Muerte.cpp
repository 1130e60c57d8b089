// Loaded before the libraries of a program (LD_PRELOAD): kills it at the n-th thing that it does to the file
// system below a folder. Half of what it was writing then is written.
//     ATIPICOS_MUERTE_EN  the folder
//     ATIPICOS_MUERTE_N   n, from 1
//     ATIPICOS_CON_NOMBRE when set, there are no files without a name, as on many a network's disk
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

// The names and arguments are those of the system.
// NOLINTBEGIN
namespace {

template <class Funcion> Funcion* verdadera(const char* nombre)
{
    return reinterpret_cast<Funcion*>(dlsym(RTLD_NEXT, nombre));
}

bool es_de_alli(const char* ruta)
{
    static const char* carpeta = std::getenv("ATIPICOS_MUERTE_EN");
    return carpeta != nullptr && ruta != nullptr && std::strncmp(ruta, carpeta, std::strlen(carpeta)) == 0;
}

bool es_de_alli(int fichero)
{
    char ruta[4096];
    const auto cuantos
        = readlink(("/proc/self/fd/" + std::to_string(fichero)).c_str(), ruta, sizeof ruta - 1);
    if (cuantos < 0)
        return false;
    ruta[cuantos] = '\0';
    return es_de_alli(ruta);
}

/// Whether it is the turn.
template <class Donde> bool toca(Donde donde)
{
    static long quedan = std::atol(std::getenv("ATIPICOS_MUERTE_N"));
    return es_de_alli(donde) && --quedan == 0;
}

void muere() { kill(getpid(), SIGKILL); }

template <class Donde> void cuenta(Donde donde)
{
    if (toca(donde))
        muere();
}

}

extern "C" {

ssize_t write(int fichero, const void* datos, size_t bytes)
{
    static const auto otra = verdadera<ssize_t(int, const void*, size_t)>("write");
    if (toca(fichero)) {
        otra(fichero, datos, bytes / 2);
        muere();
    }
    return otra(fichero, datos, bytes);
}

ssize_t pwrite64(int fichero, const void* datos, size_t bytes, off64_t lugar)
{
    static const auto otra = verdadera<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
    if (toca(fichero)) {
        otra(fichero, datos, bytes / 2, lugar);
        muere();
    }
    return otra(fichero, datos, bytes, lugar);
}

int ftruncate64(int fichero, off64_t bytes)
{
    static const auto otra = verdadera<int(int, off64_t)>("ftruncate64");
    cuenta(fichero);
    return otra(fichero, bytes);
}

int fsync(int fichero)
{
    static const auto otra = verdadera<int(int)>("fsync");
    cuenta(fichero);
    return otra(fichero);
}

int fdatasync(int fichero)
{
    static const auto otra = verdadera<int(int)>("fdatasync");
    cuenta(fichero);
    return otra(fichero);
}

int open(const char* ruta, int modo, ...)
{
    static const auto otra = verdadera<int(const char*, int, ...)>("open");
    va_list resto;
    va_start(resto, modo);
    const bool sin_nombre = (modo & O_TMPFILE) == O_TMPFILE;
    const auto permisos = (modo & O_CREAT) != 0 || sin_nombre ? va_arg(resto, mode_t) : 0;
    va_end(resto);
    if (sin_nombre && std::getenv("ATIPICOS_CON_NOMBRE") != nullptr) {
        errno = EOPNOTSUPP;
        return -1;
    }
    if ((modo & O_CREAT) != 0)
        cuenta(ruta);
    return otra(ruta, modo, permisos);
}

int open64(const char* ruta, int modo, ...)
{
    static const auto otra = verdadera<int(const char*, int, ...)>("open64");
    va_list resto;
    va_start(resto, modo);
    const auto permisos = (modo & O_CREAT) != 0 ? va_arg(resto, mode_t) : 0;
    va_end(resto);
    if ((modo & O_CREAT) != 0)
        cuenta(ruta);
    return otra(ruta, modo, permisos);
}

int unlink(const char* ruta)
{
    static const auto otra = verdadera<int(const char*)>("unlink");
    cuenta(ruta);
    return otra(ruta);
}

int unlinkat(int carpeta, const char* ruta, int modo)
{
    static const auto otra = verdadera<int(int, const char*, int)>("unlinkat");
    if (carpeta == AT_FDCWD)
        cuenta(ruta);
    else
        cuenta(carpeta);
    return otra(carpeta, ruta, modo);
}

int linkat(int de, const char* antes, int a, const char* despues, int modo)
{
    static const auto otra = verdadera<int(int, const char*, int, const char*, int)>("linkat");
    cuenta(despues);
    return otra(de, antes, a, despues, modo);
}

int renameat2(int de, const char* antes, int a, const char* despues, unsigned modo)
{
    static const auto otra = verdadera<int(int, const char*, int, const char*, unsigned)>("renameat2");
    cuenta(despues);
    return otra(de, antes, a, despues, modo);
}
}
// NOLINTEND
