"""What the kernel's own files say of its FCoE devices, as the instances that the client must show.

Reads a tree of /sys and /proc: a captured one, or one that was copied from a running kernel. Devices are found from the
class folders (sys/class/fc_host, fc_remote_ports, scsi_device, block) and by their links; every value keeps the file that it
was read from, so that a difference can name it.
"""

import os
import re
import struct
from dataclasses import dataclass, field

PORT_TYPES = {
    "Unknown": 1,
    "Other": 2,
    "Not Present": 3,
    "NPort (fabric via point-to-point)": 5,
    "NLPort (fabric via loop)": 6,
    "LPort (private loop)": 20,
    "Point-To-Point (direct nport connection)": 21,
    "NPIV VPORT": 2,
}
FABRIC_TYPES = {"Fabric": 1, "VN2VN": 2}
TARGET_STATES = {"Online": 1, "Blocked": 2, "Not Present": 3}
NOT_COUNTED = 0xFFFFFFFFFFFFFFFF
SECTOR = 512
PCI_ADDRESS = re.compile(r"[0-9a-f]{4,8}:[0-9a-f]{2}:[0-9a-f]{2}\.[0-7]")

# The keys by which an instance is told from the others of its class. More than the class's own keys where those repeat: a
# target is seen through several ports, a forwarder may be there under two names.
IDENTITY = {
    "Zarn_FCOEHBA": ("DeviceID",),
    "Zarn_FCoEPort": ("DeviceID", "WorldWidePortName"),
    "Zarn_FCoEFabric": ("DeviceID", "Name"),
    "Zarn_FcoeTarget": ("DeviceID", "PortWorldWidePortName", "Name"),
    "Zarn_FCoeLUN": ("DeviceID", "PortWorldWidePortName", "TargetWorldWidePortName", "ID"),
    "Zarn_FCoeVLAN": ("DeviceID", "VLANName"),
    "Zarn_FCoEStatistics": ("DeviceID", "Statistic"),
}
CLASSES = tuple(IDENTITY)


@dataclass
class Value:
    """A property's value and the file that says so."""

    value: object
    source: str
    counts: bool = False  # grows while it is looked at


@dataclass
class Host:
    name: str  # host0
    fc: str  # sys/class/fc_host/host0
    device: str  # its folder below the root
    controller: str
    interface: str
    npiv: bool
    order: tuple = field(default=())


def numbers(name):
    """fcf_2 comes before fcf_10."""
    return [int(part) for part in re.findall(r"\d+", name)]


def path(class_name, **keys):
    return class_name + "." + ",".join(f'{key}="{value}"' for key, value in keys.items())


def hexadecimal(number):
    return f"0x{number:X}"


class KernelTree:
    """`host_name` is the name of the machine that the client runs on; None when the tree is of that machine."""

    def __init__(self, root, host_name=None):
        self.root = os.path.realpath(root)
        self.host_name = host_name
        self._devices = {}
        self.hosts = self._find_hosts()

    # Files

    def _at(self, file):
        return os.path.join(self.root, file)

    def read(self, file):
        """As it is; nothing when it is not there or could not be read."""
        try:
            with open(self._at(file), encoding="utf-8", errors="replace") as opened:
                return opened.read()
        except OSError:
            return ""

    def text(self, file):
        return Value(self.read(file).strip(), file)

    def number(self, file, base=10):
        text = self.read(file).strip()
        return Value(int(text, base) if text else 0, file)

    def name(self, file):
        """A world wide name: 16 digits, or nothing."""
        digits = self.read(file).strip().removeprefix("0x")
        return Value("" if not digits.strip("0") else digits, file)

    def names(self, folder, prefix=""):
        try:
            found = os.listdir(self._at(folder))
        except FileNotFoundError:
            return []
        return sorted((name for name in found if name.startswith(prefix)), key=numbers)

    def device(self, link):
        """Where a link leads, below the root."""
        if link not in self._devices:
            self._devices[link] = os.path.relpath(os.path.realpath(self._at(link)), self.root)
        return self._devices[link]

    # Devices

    def _find_hosts(self):
        hosts = []
        for name in self.names("sys/class/fc_host", "host"):
            device = self.device(f"sys/class/fc_host/{name}/device")
            parts = device.split("/")
            controllers = [i for i, part in enumerate(parts) if part.startswith("ctlr_")]
            if not controllers:
                continue  # of another kind of adapter
            controller = "/".join(parts[: controllers[0] + 1])
            interface = parts[controllers[0] - 1]
            vports = [part for part in parts if part.startswith("vport-")]
            index = int(self.read(f"sys/class/net/{interface}/ifindex"))
            order = (index, numbers(vports[0]) if vports else [])
            hosts.append(Host(name, f"sys/class/fc_host/{name}", device, controller, interface, bool(vports), order))
        return sorted(hosts, key=lambda host: host.order)

    def adapters(self):
        return [host for host in self.hosts if not host.npiv]

    def forwarders(self, host):
        return [f"{host.controller}/{name}" for name in self.names(host.controller, "fcf_")
                if os.path.isdir(self._at(f"{host.controller}/{name}"))]

    def remote_ports(self, host):
        """Those that are SCSI targets."""
        ports = [f"sys/class/fc_remote_ports/{name}"
                 for name in self.names("sys/class/fc_remote_ports", f"rport-{host.name.removeprefix('host')}:")]
        return [port for port in ports if self.number(f"{port}/scsi_target_id").value >= 0]

    def disks(self, port):
        below = self.device(f"{port}/device") + "/"
        found = [f"sys/class/scsi_device/{name}/device" for name in self.names("sys/class/scsi_device")]
        return [disk for disk in found if self.device(disk).startswith(below) and self.read(f"{disk}/type").strip() == "0"]

    def block_device(self, disk):
        for name in self.names("sys/class/block"):
            if self.device(f"sys/class/block/{name}/device") == self.device(disk):
                return f"sys/class/block/{name}"
        return None

    def bus_address(self, interface):
        """Of the network adapter: in the path of the interface, or of those that it is on."""
        pending = [f"sys/class/net/{interface}"]
        while pending:
            link = pending.pop(0)
            device = self.device(link)
            addresses = [part for part in device.split("/") if PCI_ADDRESS.fullmatch(part)]
            if addresses:
                return Value(addresses[-1], link)
            pending += [f"{device}/{name}" for name in self.names(device, "lower_")]
        return Value("", f"sys/class/net/{interface}")

    # Instances, by class: lists of {property: Value} in the order in which the client must show them

    def instances(self, class_name):
        return {
            "Zarn_FCOEHBA": self._hbas,
            "Zarn_FCoEPort": self._ports,
            "Zarn_FCoEFabric": self._fabrics,
            "Zarn_FcoeTarget": self._targets,
            "Zarn_FCoeLUN": self._luns,
            "Zarn_FCoeVLAN": self._vlans,
            "Zarn_FCoEStatistics": self._statistics,
        }[class_name]()

    def _fcid(self, file):
        number = self.number(file, 16)
        return Value(hexadecimal(number.value), file)

    def _hbas(self):
        system = Value(self.host_name, "the host's name") if self.host_name else self.text("proc/sys/kernel/hostname")
        adapter_class = "Zarn_PhysicalEthernetAdapter"
        return [
            {
                "DeviceID": Value(host.interface, host.fc),
                "Name": self.text(f"{host.fc}/symbolic_name"),
                "HBAName": Value(host.name, host.fc),
                "FCID": self._fcid(f"{host.fc}/port_id"),
                "BusInformation": self.bus_address(host.interface),
                "LinkSpeed": self.text(f"{host.fc}/speed"),
                "LinkStatus": self.text(f"{host.fc}/port_state"),
                "Model": self.text(f"{host.fc}/model"),
                "WorldWidePortName": self.name(f"{host.fc}/port_name"),
                "WorldWideNodeName": self.name(f"{host.fc}/node_name"),
                "HBAID": Value(host.device.split("/")[-1], f"{host.fc}/device"),
                "Adapter": Value(
                    path(adapter_class, DeviceID=host.interface, CreationClassName=adapter_class,
                         SystemCreationClassName="CIM_ComputerSystem", SystemName=system.value), system.source),
            }
            for host in self.adapters()
        ]

    def _ports(self):
        instances = []
        for host in self.hosts:
            selected = [fcf for fcf in self.forwarders(host) if self.number(f"{fcf}/selected").value == 1]
            switch = self.name(f"{selected[0]}/switch_name") if selected else Value("", f"{host.controller}/fcf_*/selected")
            # The kernel's text is the same for a virtual port as for the adapter's own.
            kind = Value("NPIV VPORT", host.device) if host.npiv else self.text(f"{host.fc}/port_type")
            instances.append({
                "DeviceID": Value(host.interface, host.fc),
                "Name": self.text(f"{host.fc}/symbolic_name"),
                "WorldWideNodeName": self.name(f"{host.fc}/node_name"),
                "WorldWidePortName": self.name(f"{host.fc}/port_name"),
                "FCID": self._fcid(f"{host.fc}/port_id"),
                "PortTypeID": Value(PORT_TYPES[kind.value], kind.source),
                "PortType": kind,
                "Fabric": Value(path("Zarn_FCoEFabric", DeviceID=host.interface, WorldWideNodeName=switch.value),
                                switch.source),
                "FabricName": self.name(f"{host.fc}/fabric_name"),
            })
        return instances

    def _fabrics(self):
        instances = []
        for host in self.adapters():
            mode = self.text(f"{host.controller}/mode")
            for fcf in self.forwarders(host):
                fc_map = self.number(f"{fcf}/fc_map", 16)
                instances.append({
                    "DeviceID": Value(host.interface, host.controller),
                    "Name": Value(os.path.basename(fcf), fcf),
                    "FabricName": self.name(f"{fcf}/fabric_name"),
                    "WorldWideNodeName": self.name(f"{fcf}/switch_name"),
                    "WorldWidePortName": Value("", fcf),
                    "FCMap": Value(hexadecimal(fc_map.value), fc_map.source),
                    "FabricTypeID": Value(FABRIC_TYPES[mode.value], mode.source),
                    "FabricType": mode,
                    "Priority": self.number(f"{fcf}/priority"),
                    "VlanID": self.number(f"{fcf}/vlan_id"),
                    "HBA": Value(path("Zarn_FCOEHBA", DeviceID=host.interface), host.controller),
                })
        return instances

    def _targets(self):
        instances = []
        for host in self.hosts:
            local = self.name(f"{host.fc}/port_name")
            for port in self.remote_ports(host):
                name = os.path.basename(port)
                first = (self.disks(port) + [f"{port}/device/none"])[0]
                state = self.text(f"{port}/port_state")
                instances.append({
                    "DeviceID": Value(host.interface, host.fc),
                    "Name": Value(name, port),
                    "FabricName": self.name(f"{host.fc}/fabric_name"),
                    "WorldWideNodeName": self.name(f"{port}/node_name"),
                    "WorldWidePortName": self.name(f"{port}/port_name"),
                    "FCID": self._fcid(f"{port}/port_id"),
                    "ScsiBus": Value(numbers(name)[1], port),
                    "ScsiTarget": self.number(f"{port}/scsi_target_id"),
                    "Vendor": self.text(f"{first}/vendor"),
                    "SerialNumber": self.text(f"{first}/wwid"),
                    "TargetType": Value(TARGET_STATES.get(state.value, 0), state.source),
                    "Port": Value(path("Zarn_FCoEPort", DeviceID=host.interface, WorldWidePortName=local.value),
                                  local.source),
                    "PortWorldWidePortName": local,
                })
        return instances

    def _luns(self):
        instances = []
        for host in self.hosts:
            for port in self.remote_ports(host):
                for disk in self.disks(port):
                    instances.append(self._lun(host, port, disk))
        return instances

    def _lun(self, host, port, disk):
        _, channel, target, lun = numbers(disk.split("/")[-2])
        remote = self.name(f"{port}/port_name")
        block = self.block_device(disk)
        system_name = capacity = block_size = Value("", f"{disk}/block")
        if block:
            sectors = self.number(f"{block}/size")
            size = self.number(f"{block}/queue/logical_block_size")
            system_name = Value("/dev/" + os.path.basename(block), block)
            capacity = Value(str(sectors.value * SECTOR), sectors.source)
            block_size = Value(str(size.value), size.source)
        words = [self.read(f"{disk}/{file}").strip() for file in ("vendor", "model", "rev")]
        return {
            "DeviceID": Value(host.interface, host.fc),
            "Name": Value(" ".join(word for word in words if word), f"{disk}/vendor, model, rev"),
            "FabricName": self.name(f"{host.fc}/fabric_name"),
            "ID": Value(lun, disk),
            "BusNumber": Value(channel, disk),
            "TargetNumber": Value(target, disk),
            "FCID": self._fcid(f"{port}/port_id"),
            "OSDeviceName": system_name,
            "Capacity": capacity,
            "BlockSize": block_size,
            "Target": Value(path("Zarn_FcoeTarget", DeviceID=host.interface, WorldWidePortName=remote.value),
                            remote.source),
            "TargetWorldWidePortName": remote,
            "PortWorldWidePortName": self.name(f"{host.fc}/port_name"),
        }

    def _vlan_id(self, interface):
        table = "proc/net/vlan/config"
        for line in self.read(table).splitlines():
            columns = [column.strip() for column in line.split("|")]
            if len(columns) == 3 and columns[0] == interface:
                return Value(int(columns[1]), table)
        return Value(0, table)

    def _vlans(self):
        instances = []
        for host in self.adapters():
            number = self._vlan_id(host.interface)
            state = self.text(f"sys/class/net/{host.interface}/operstate")
            if self.number(f"{host.controller}/enabled").value == 0:
                status, source = (3, "Disabled"), f"{host.controller}/enabled"
            else:
                # unknown: the driver does not tell, and data may flow
                status, source = (1, "Up") if state.value in ("up", "unknown") else (2, "Down"), state.source
            instances.append({
                "DeviceID": Value(host.interface, host.controller),
                "Name": Value(f"VLAN {number.value}" if number.value else host.interface, number.source),
                "VLANName": Value(host.interface, host.controller),
                "StatusID": Value(status[0], source),
                "Status": Value(status[1], source),
                "VlanID": number,
                "HBA": Value(path("Zarn_FCOEHBA", DeviceID=host.interface), host.controller),
            })
        return instances

    def _counters(self, host):
        """(name, Value) of each counter that is counted."""
        for name in sorted(self.names(f"{host.fc}/statistics")):
            file = f"{host.fc}/statistics/{name}"
            text = self.read(file).strip()
            if text and int(text, 16) != NOT_COUNTED:
                yield name, Value(int(text, 16), file, counts=True)
        for name in sorted(self.names(f"{host.controller}/lesb")):
            file = f"{host.controller}/lesb/{name}"
            # Kept in the byte order of the wire, printed as if it were that of the (little-endian) machine.
            wire = struct.pack("<I", self.number(file).value)
            yield f"lesb_{name}", Value(struct.unpack(">I", wire)[0], file, counts=True)
        yield "npiv_vports_inuse", self.number(f"{host.fc}/npiv_vports_inuse")

    def _statistics(self):
        instances = []
        for host in self.adapters():
            for name, value in self._counters(host):
                words = name.replace("_", " ")
                instances.append({
                    "DeviceID": Value(host.interface, host.fc),
                    "Name": Value(words[0].upper() + words[1:], value.source),
                    "Statistic": Value(name, value.source),
                    "Value": value,
                    "HBA": Value(path("Zarn_FCOEHBA", DeviceID=host.interface), host.fc),
                })
        return instances
