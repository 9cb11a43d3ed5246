#!/usr/bin/python3
"""A real ModemManager with fake modems, for the tests and the benchmark of the ModemManager
backend of libsdk.

    /usr/bin/python3 mm_testenv.py [--keep-log] [--] COMMAND [ARGS...]
    /usr/bin/python3 mm_testenv.py --control plug m1 E3372    (inside: sends one command)

Starts, in a fresh temporary folder: a private dbus-daemon that serves as both the session and
the system bus, a polkitd mock (python-dbusmock) that allows every action, and ModemManager in
test mode with a plugin folder holding only the generic plugin. Then it runs COMMAND with
DBUS_SYSTEM_BUS_ADDRESS and DBUS_SESSION_BUS_ADDRESS pointing at the private bus and
LINKDECK_MM_CONTROL naming a unix socket that takes one command per connection, one line each,
and answers one line ("ok ..." or "error ..."):

    plug ID MODEL [IMSI [MNC_LENGTH]]   a fake AT modem listens on a filesystem socket and the
                                        daemon is told to probe it (Test.SetProfile); the answer
                                        comes once the modem is on the bus: "ok PATH SEEN SENT",
                                        the CLOCK_MONOTONIC times in ns at which this script saw
                                        InterfacesAdded and had asked for the profile. IMSI "-"
                                        means a SIM locked by a PIN (no operator id).
    unplug ID                           InhibitDevice("/virtual/ID", true); answers once the
                                        modem has left the bus: "ok SEEN SENT", the times of
                                        InterfacesRemoved and of the request
    stop-daemon                         stops ModemManager (SIGTERM, by pid) and waits for its
                                        name to go
    start-daemon                        starts it again and plugs the modems that were plugged
    modems                              "ok PATH..." of the modems on the bus now

Exits with COMMAND's status, or 77 (skipped) when ModemManager, dbus-daemon or python-dbusmock
is not installed. Every process it starts is stopped by its pid on the way out.
"""

import glob
import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

SKIPPED = 77
MM_NAME = "org.freedesktop.ModemManager1"
MM_PATH = "/org/freedesktop/ModemManager1"
WAIT_S = 30


def log(text):
    print("mm_testenv: " + text, file=sys.stderr, flush=True)


def skip(reason):
    print("mm_testenv: skipped: " + reason, flush=True)
    sys.exit(SKIPPED)


def find_generic_plugin():
    for pattern in ("/usr/lib/*/ModemManager/libmm-plugin-generic.so",
                    "/usr/lib/ModemManager/libmm-plugin-generic.so",
                    "/usr/lib64/ModemManager/libmm-plugin-generic.so"):
        found = glob.glob(pattern)
        if found:
            return found[0]
    return None


# ---------------------------------------------------------------------------------------------
# The fake AT modem

class FakeModem:
    """Answers the AT commands that the daemon's generic plugin sends while probing, initialising
    and enabling a modem, on a unix filesystem socket (the daemon opens it as its port)."""

    def __init__(self, modem_id, model, imsi, mnc_length, folder):
        self.modem_id = modem_id
        self.model = model
        self.imsi = imsi
        self.mnc_length = mnc_length
        self.path = os.path.join(folder, "modem-" + modem_id)
        self.listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.listener.bind(self.path)
        self.listener.listen(4)
        self.closed = False
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self):
        self.closed = True
        try:
            self.listener.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass
        self.listener.close()

    def _accept(self):
        while not self.closed:
            try:
                connection, _ = self.listener.accept()
            except OSError:
                return
            threading.Thread(target=self._serve, args=(connection,), daemon=True).start()

    def _serve(self, connection):
        pending = b""
        with connection:
            while not self.closed:
                try:
                    data = connection.recv(4096)
                except OSError:
                    return
                if not data:
                    return
                pending += data
                while b"\r" in pending:
                    line, pending = pending.split(b"\r", 1)
                    command = line.strip(b"\n ").decode("ascii", "replace")
                    if not command:
                        continue
                    try:
                        connection.sendall(self._reply(command).encode("ascii"))
                    except OSError:
                        return

    def _reply(self, command):
        lines, ok = self._answer(command.upper() if not command.upper().startswith("AT+CRSM")
                                 else command.upper().replace(" ", ""))
        text = "".join("\r\n%s\r\n" % line for line in lines)
        return text + ("\r\nOK\r\n" if ok else "\r\nERROR\r\n")

    def _answer(self, c):
        locked = self.imsi is None
        if c in ("AT", "ATE0", "ATE1", "ATV1", "ATZ", "AT&F", "ATQ0", "AT+CMEE=1", "AT+CMEE=2",
                 "AT+CFUN=1", "AT+CFUN=4", "AT+COPS=3,2", "AT+COPS=3,0", "AT+CREG=0",
                 "AT+CREG=1", "AT+CREG=2", "AT+CGREG=0", "AT+CGREG=1", "AT+CGREG=2",
                 "AT+CMER=3,0,0,1", "AT+CSCS=\"UCS2\"", "AT+CSCS=\"IRA\"", "AT+CSCS=\"GSM\"",
                 "AT+COPS=0"):
            return [], True
        if c == "AT+GCAP":
            return ["+GCAP: +CGSM,+DS,+ES"], True
        if c in ("AT+CGMI", "AT+GMI"):
            return ["LinkDeck Test Modems"], True
        if c in ("AT+CGMM", "AT+GMM"):
            return [self.model], True
        if c in ("AT+CGMR", "AT+GMR"):
            return ["1.0.0"], True
        if c in ("AT+CGSN", "AT+GSN"):
            return ["35693803564%04d" % (sum(map(ord, self.modem_id)) % 10000)], True
        if c == "ATI":
            return ["LinkDeck Test Modems", self.model], True
        if c == "AT+CPIN?":
            return ["+CPIN: SIM PIN"] if locked else ["+CPIN: READY"], True
        if c == "AT+CIMI":
            return ([], False) if locked else ([self.imsi], True)
        if c.startswith("AT+CRSM=176,28589"):  # EF_AD: the length of the MNC in byte 4
            return ["+CRSM: 144,0,\"000000%02X\"" % self.mnc_length], True
        if c.startswith("AT+CRSM=176,12258"):  # EF_ICCID
            return ["+CRSM: 144,0,\"98942000001234567890\""], True
        if c == "AT+CFUN?":
            return ["+CFUN: 1"], True
        if c == "AT+CSCS=?":
            return ["+CSCS: (\"IRA\",\"GSM\",\"UCS2\")"], True
        if c == "AT+CSCS?":
            return ["+CSCS: \"IRA\""], True
        if c == "AT+CREG?":
            return ["+CREG: 0,1"], True
        if c == "AT+CGREG?":
            return ["+CGREG: 0,1"], True
        if c == "AT+CSQ":
            return ["+CSQ: 20,99"], True
        if c == "AT+COPS?" and not locked:
            return ["+COPS: 0,2,\"%s\",2" % self.imsi[:3 + self.mnc_length]], True
        if c == "AT+CREG=?":
            return ["+CREG: (0-2)"], True
        if c == "AT+CGREG=?":
            return ["+CGREG: (0-2)"], True
        if c == "AT+WS46=?" or c == "AT+WS46?":
            return ["+WS46: (12,22)"] if c.endswith("=?") else ["+WS46: 12"], True
        return [], False


# ---------------------------------------------------------------------------------------------
# The environment

class Environment:
    def __init__(self, folder, keep_log):
        self.folder = folder
        self.keep_log = keep_log
        self.processes = {}  # name -> Popen, each stopped by its pid
        self.modems = {}     # id -> FakeModem
        self.plugged = {}    # id -> object path while the modem is on the bus
        self.mm_log = os.path.join(folder, "ModemManager.log")
        self.lock = threading.Lock()
        self.changed = threading.Condition(self.lock)
        self.added = {}      # object path -> CLOCK_MONOTONIC ns of its InterfacesAdded
        self.removed = {}    # object path -> CLOCK_MONOTONIC ns of its InterfacesRemoved
        self.present = set()
        self.mm_running = False

    # -- processes --

    def start(self):
        self.bus_address = self._start_bus()
        self.env = dict(os.environ)
        self.env["DBUS_SYSTEM_BUS_ADDRESS"] = self.bus_address
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self.bus_address
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = self.bus_address
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self.bus_address
        from gi.repository import Gio, GLib
        self.Gio, self.GLib = Gio, GLib
        self.bus = Gio.DBusConnection.new_for_address_sync(
            self.bus_address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
            Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)
        self._watch_modems()
        self._start_polkit()
        self.start_daemon()

    def _spawn(self, name, argv, **kwargs):
        process = subprocess.Popen(argv, env=getattr(self, "env", None), **kwargs)
        self.processes[name] = process
        return process

    def _stop(self, name):
        process = self.processes.pop(name, None)
        if process is None or process.poll() is not None:
            return
        os.kill(process.pid, signal.SIGTERM)
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            os.kill(process.pid, signal.SIGKILL)
            process.wait()

    def stop_all(self):
        for modem in self.modems.values():
            modem.close()
        for name in list(self.processes)[::-1]:
            self._stop(name)

    def _start_bus(self):
        process = self._spawn("dbus-daemon",
                              ["dbus-daemon", "--session", "--nofork", "--print-address=1",
                               "--address=unix:path=" + os.path.join(self.folder, "bus")],
                              stdout=subprocess.PIPE, text=True)
        address = process.stdout.readline().strip()
        if not address:
            raise RuntimeError("dbus-daemon gave no address")
        return address

    def _wait_name(self, name, present, timeout=WAIT_S):
        deadline = time.monotonic() + timeout
        while time.monotonic() < deadline:
            reply = self.bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                       "org.freedesktop.DBus", "NameHasOwner",
                                       self.GLib.Variant("(s)", (name,)), None,
                                       self.Gio.DBusCallFlags.NONE, 5000, None)
            if reply.unpack()[0] == present:
                return True
            time.sleep(0.05)
        return False

    def _start_polkit(self):
        self._spawn("polkitd-mock", ["/usr/bin/python3", "-m", "dbusmock", "--session",
                                     "--template", "polkitd"], stdout=subprocess.DEVNULL)
        if not self._wait_name("org.freedesktop.PolicyKit1", True):
            raise RuntimeError("the polkitd mock did not come up")
        self.bus.call_sync("org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
                           "org.freedesktop.DBus.Mock", "AllowUnknown",
                           self.GLib.Variant("(b)", (True,)), None,
                           self.Gio.DBusCallFlags.NONE, 5000, None)

    def start_daemon(self):
        plugins = os.path.join(self.folder, "plugins")
        os.makedirs(plugins, exist_ok=True)
        target = os.path.join(plugins, "libmm-plugin-generic.so")
        if not os.path.exists(target):
            os.symlink(find_generic_plugin(), target)
        mm = shutil.which("ModemManager") or "/usr/sbin/ModemManager"
        log_file = open(self.mm_log, "a")
        self._spawn("ModemManager", [mm, "--test-session", "--test-no-udev",
                                     "--test-no-suspend-resume", "--test-enable",
                                     "--test-plugin-dir=" + plugins, "--log-level=DEBUG",
                                     "--log-timestamps"],
                    stdout=log_file, stderr=subprocess.STDOUT)
        log_file.close()
        if not self._wait_name(MM_NAME, True):
            raise RuntimeError("ModemManager did not come up (see %s)" % self.mm_log)
        with self.lock:
            self.mm_running = True
        for modem_id in list(self.plugged):
            self._set_profile(modem_id)
        return "ok"

    def stop_daemon(self):
        self._stop("ModemManager")
        if not self._wait_name(MM_NAME, False):
            return "error the daemon's name stayed on the bus"
        with self.lock:
            self.mm_running = False
            self.present.clear()
        return "ok"

    # -- modems --

    def _watch_modems(self):
        def on_signal(_connection, _sender, _path, _interface, signal_name, parameters):
            now = time.monotonic_ns()
            path = parameters.unpack()[0]
            with self.changed:
                if signal_name == "InterfacesAdded" and path.startswith(MM_PATH + "/Modem/"):
                    self.added[path] = now
                    self.present.add(path)
                elif signal_name == "InterfacesRemoved" and path in self.present:
                    self.removed[path] = now
                    self.present.discard(path)
                self.changed.notify_all()

        self.bus.signal_subscribe(None, "org.freedesktop.DBus.ObjectManager", None, MM_PATH,
                                  None, self.Gio.DBusSignalFlags.NONE, on_signal)
        self.loop = self.GLib.MainLoop()
        threading.Thread(target=self.loop.run, daemon=True).start()

    def _mm_call(self, interface, method, variant):
        return self.bus.call_sync(MM_NAME, MM_PATH, interface, method, variant, None,
                                  self.Gio.DBusCallFlags.NONE, 20000, None)

    def _set_profile(self, modem_id):
        self._mm_call("org.freedesktop.ModemManager1.Test", "SetProfile",
                      self.GLib.Variant("(ssas)", (modem_id, "generic",
                                                   [self.modems[modem_id].path])))

    def plug(self, modem_id, model, imsi="262019876543210", mnc_length="2"):
        if modem_id in self.modems:
            return "error %s was plugged before; use a fresh id" % modem_id
        self.modems[modem_id] = FakeModem(modem_id, model, None if imsi == "-" else imsi,
                                          int(mnc_length), self.folder)
        with self.changed:
            before = set(self.present)
        sent = time.monotonic_ns()
        self._set_profile(modem_id)
        with self.changed:
            if not self.changed.wait_for(lambda: self.present - before, WAIT_S):
                return "error the modem did not appear (see %s)" % self.mm_log
            path = sorted(self.present - before)[0]
            self.plugged[modem_id] = path
            return "ok %s %d %d" % (path, self.added[path], sent)

    def unplug(self, modem_id):
        path = self.plugged.pop(modem_id, None)
        if path is None:
            return "error %s is not plugged" % modem_id
        sent = time.monotonic_ns()
        self._mm_call("org.freedesktop.ModemManager1", "InhibitDevice",
                      self.GLib.Variant("(sb)", ("/virtual/" + modem_id, True)))
        with self.changed:
            if not self.changed.wait_for(lambda: path not in self.present, WAIT_S):
                return "error the modem stayed on the bus"
            return "ok %d %d" % (self.removed[path], sent)

    def list_modems(self):
        with self.lock:
            return " ".join(["ok"] + sorted(self.present))

    def handle(self, line):
        words = line.split()
        if not words:
            return "error empty command"
        commands = {"plug": self.plug, "unplug": self.unplug, "stop-daemon": self.stop_daemon,
                    "start-daemon": self.start_daemon, "modems": self.list_modems}
        if words[0] not in commands:
            return "error unknown command " + words[0]
        try:
            return commands[words[0]](*words[1:])
        except Exception as error:  # the test reads the answer; the environment goes on
            return "error %s" % error

    def serve(self, path):
        server = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        server.bind(path)
        server.listen(8)

        def loop():
            while True:
                try:
                    connection, _ = server.accept()
                except OSError:
                    return
                with connection:
                    data = b""
                    while not data.endswith(b"\n"):
                        chunk = connection.recv(1024)
                        if not chunk:
                            break
                        data += chunk
                    answer = self.handle(data.decode("utf-8", "replace").strip())
                    try:
                        connection.sendall((answer + "\n").encode("utf-8"))
                    except OSError:
                        pass

        threading.Thread(target=loop, daemon=True).start()
        return server


def send_control(words):
    client = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
    client.connect(os.environ["LINKDECK_MM_CONTROL"])
    client.sendall((" ".join(words) + "\n").encode("utf-8"))
    answer = client.makefile().readline().strip()
    print(answer)
    return 0 if answer.startswith("ok") else 1


def main(argv):
    if argv[:1] == ["--control"]:
        return send_control(argv[1:])
    keep_log = False
    while argv and argv[0].startswith("--"):
        option = argv.pop(0)
        if option == "--":
            break
        if option == "--keep-log":
            keep_log = True
        else:
            log("unknown option " + option)
            return 2
    if not argv:
        log("usage: mm_testenv.py [--keep-log] [--] COMMAND [ARGS...]")
        return 2
    if not (shutil.which("ModemManager") or os.path.exists("/usr/sbin/ModemManager")):
        skip("ModemManager is not installed")
    if not find_generic_plugin():
        skip("ModemManager's generic plugin is not installed")
    if not shutil.which("dbus-daemon"):
        skip("dbus-daemon is not installed")
    try:
        import dbusmock  # noqa: F401
        import gi  # noqa: F401
    except ImportError as error:
        skip("python module missing: %s" % error)

    folder = tempfile.mkdtemp(prefix="linkdeck-mm-")
    environment = Environment(folder, keep_log)
    status = 1
    interrupted = []
    signal.signal(signal.SIGTERM, lambda *_: interrupted.append(1) or sys.exit(143))
    try:
        environment.start()
        control = os.path.join(folder, "control")
        server = environment.serve(control)
        env = dict(environment.env)
        env["LINKDECK_MM_CONTROL"] = control
        try:
            command = subprocess.Popen(argv, env=env)
        except OSError as error:
            raise RuntimeError("cannot start %s: %s" % (argv[0], error))
        environment.processes["command"] = command
        status = command.wait()
        environment.processes.pop("command", None)
        server.close()
    except RuntimeError as error:
        log(str(error))
        keep_log = True
    finally:
        environment.stop_all()
        if status != 0 or keep_log:
            log("ModemManager's log: " + environment.mm_log)
            try:
                with open(environment.mm_log) as f:
                    tail = f.readlines()[-40:]
                sys.stderr.write("".join(tail))
            except OSError:
                pass
        if not keep_log and status == 0:
            shutil.rmtree(folder, ignore_errors=True)
    return status


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
