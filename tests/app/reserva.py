"""Two PostgreSQL servers of a script's own: one that is written to and a synchronous standby of it, each behind a socket."""
import os
import pathlib
import pwd
import shutil
import signal
import subprocess
import tempfile
import time


def programas():
    """The folder with the programs of the newest version; None where no server is installed."""
    hay = [una for una in pathlib.Path("/usr/lib/postgresql").glob("*/bin") if (una / "initdb").exists()]
    return max(hay, key=lambda una: int(una.parent.name), default=None)


class ConReserva:
    """Whoever is written to can be killed and the other one promoted; no commit is told before it is on both."""

    def __init__(self):
        self.programas = programas()
        self.carpeta = pathlib.Path(tempfile.mkdtemp(prefix="atipicos-pg-"))
        # The server refuses to be run by root.
        self.cuenta = None if os.geteuid() else pwd.getpwnam("postgres")
        if self.cuenta:
            os.chown(self.carpeta, self.cuenta.pw_uid, self.cuenta.pw_gid)
        self.primario = "uno"
        self._corre("initdb", "-D", self.carpeta / "uno", "-U", "atipicos", "-A", "trust", "-E", "UTF8", "--locale=C.UTF-8",
                    "--no-sync")
        with open(self.carpeta / "uno/postgresql.conf", "a", encoding="utf-8") as ajustes:
            ajustes.write("listen_addresses = ''\nmax_connections = 40\nshared_buffers = 16MB\nautovacuum = off\nfsync = off\n"
                          "synchronous_standby_names = '*'\ndynamic_shared_memory_type = mmap\n")
        self._arranca("uno")
        self.repone()
        self._corre("psql", "-X", "-q", "-d", self.direccion("postgres"), "-c", "CREATE DATABASE empresa")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for cual in ("uno", "dos"):
            subprocess.run([self.programas / "pg_ctl", "stop", "-D", self.carpeta / cual, "-m", "immediate", "-w"],
                           **self._como(), check=False)
        shutil.rmtree(self.carpeta, ignore_errors=True)

    def _como(self):
        quien = {"user": self.cuenta.pw_uid, "group": self.cuenta.pw_gid, "extra_groups": []} if self.cuenta else {}
        return {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, "cwd": self.carpeta, **quien}

    def _corre(self, programa, *argumentos):
        subprocess.run([self.programas / programa, *argumentos], **self._como(), check=True)

    def _enchufe(self, cual):
        carpeta = self.carpeta / f"enchufe-{cual}"
        if not carpeta.exists():
            carpeta.mkdir()
            if self.cuenta:
                os.chown(carpeta, self.cuenta.pw_uid, self.cuenta.pw_gid)
        return carpeta

    def _arranca(self, cual):
        self._corre("pg_ctl", "start", "-D", self.carpeta / cual, "-l", self.carpeta / f"{cual}.txt", "-w", "-o",
                    f"-c unix_socket_directories={self._enchufe(cual)}")

    def direccion(self, base="empresa"):
        """Of a database on whichever of both can be written."""
        return (f"postgresql://atipicos@/{base}?host={self._enchufe('uno')},{self._enchufe('dos')}"
                "&target_session_attrs=read-write")

    def consulta(self, sql):
        """The rows of a query where it can be written: cells between bars."""
        hecho = subprocess.run([self.programas / "psql", "-X", "-q", "-A", "-t", "-d", self.direccion(), "-c", sql],
                               stdout=subprocess.PIPE, text=True, check=True)
        return hecho.stdout.splitlines()

    @property
    def reserva(self):
        """The one that is not written to."""
        return "dos" if self.primario == "uno" else "uno"

    def mata(self):
        """The server that is written to, and all its processes, as when the power fails."""
        primero = int((self.carpeta / self.primario / "postmaster.pid").read_text().splitlines()[0])
        hijos = subprocess.run(["ps", "-o", "pid=", "--ppid", str(primero)], stdout=subprocess.PIPE, text=True, check=False)
        for proceso in (primero, *map(int, hijos.stdout.split())):
            try:
                os.kill(proceso, signal.SIGKILL)
            except ProcessLookupError:
                pass
        while pathlib.Path(f"/proc/{primero}").exists():
            time.sleep(0.005)

    def asciende(self):
        """The standby takes its place, at once."""
        self.primario = self.reserva
        self._corre("pg_ctl", "promote", "-D", self.carpeta / self.primario, "-w")

    def repone(self):
        """The one that was killed is made anew as a standby, and has all that there is."""
        shutil.rmtree(self.carpeta / self.reserva, ignore_errors=True)
        self._corre("pg_basebackup", "-D", self.carpeta / self.reserva, "-d",
                    f"postgresql://atipicos@/postgres?host={self._enchufe(self.primario)}", "-R", "-c", "fast", "-X", "stream",
                    "--no-sync")
        self._arranca(self.reserva)
