"""What other programs of the guest say of the same devices: lsscsi of the hosts and disks, fcoeadm of adapters, LUNs and
forwarders. Both read the kernel's files with code of their own.

Where they are known to say less or other than the kernel, that is not compared:

- fcoeadm multiplies a disk's size, which counts 512 bytes, by its block size: only its number of blocks is used.
- fcoeadm -i leaves out controllers without a PCI adapter below them, fcoeadm -l the LUNs of a target that is not Online, and
  a target's roles are unknown after device loss: such a target is none for it.
- fcoeadm has no address of the local port for LUNs behind a virtual port.
"""

import re

SECTOR = 512
STATES = {"Online": 1, "Blocked": 2, "Not Present": 3}


def name_of(text):
    """A world wide name as the client shows it."""
    digits = text.strip().removeprefix("0x")
    return digits if digits.strip("0") else ""


def blocks(text, start):
    """The parts of an output that begin with a line that matches `start`."""
    found = []
    for line in text.splitlines():
        if re.match(start, line):
            found.append([line])
        elif found:
            found[-1].append(line)
    return found


def fields(lines, separator):
    """Of the first line of each name: {name: value}."""
    found = {}
    for line in lines:
        name, there, value = line.partition(separator)
        if there:
            found.setdefault(name.strip(), value.strip())
    return found


def fcid(text):
    return int(text, 16)


class Tools:
    def __init__(self, read):
        """`read(name)` gives the output of a tool."""
        self.hosts = {}  # lsscsi's number: fields
        for lines in blocks(read("lsscsi-hosts"), r"\["):
            self.hosts[re.match(r"\[(\d+)\]", lines[0])[1]] = fields(lines[1:], "=")
        self.disks = [(re.match(r"\[([\d:]+)\]\s+(\w+)\s.*\s(\S+)\s*$", lines[0]), fields(lines[1:], "="))
                      for lines in blocks(read("lsscsi-disks"), r"\[")]
        self.adapters = [fields(lines, ":") for lines in blocks(read("fcoeadm-i"), r"\s+Symbolic Name:")]
        self.targets = []  # (fields, [fields of a LUN])
        for lines in blocks(read("fcoeadm-l"), r"\s+Interface:"):
            luns = [fields(lun, ":") for lun in blocks("\n".join(lines), r"\s+LUN #\d+ Information:")]
            self.targets.append((fields(lines, ":"), luns))
        self.forwarders = []  # (interface, fields)
        for lines in blocks(read("fcoeadm-f"), r"\s+Interface:"):
            interface = fields(lines, ":")["Interface"]
            for forwarder in blocks("\n".join(lines), r"\s+FCF #\d+ Information"):
                self.forwarders.append((interface, fields(forwarder, ":")))


def compare(checks, stage, tools, by_class):
    """`by_class(name)` gives the client's instances of Zarn_<name>."""
    def equal(what, told, seen):
        checks.equal(f"{stage}: {what}", sorted(seen), sorted(told))

    hbas, ports = by_class("FCOEHBA"), by_class("FCoEPort")
    luns, targets = by_class("FCoeLUN"), by_class("FcoeTarget")
    equal("ports as lsscsi tells of its hosts",
          [(name_of(host["port_name"]), name_of(host["node_name"]), fcid(host["port_id"]), name_of(host["fabric_name"]))
           for host in tools.hosts.values()],
          [(port["WorldWidePortName"], port["WorldWideNodeName"], fcid(port["FCID"]), port["FabricName"])
           for port in ports])
    own = {hba["WorldWidePortName"] for hba in hbas}
    equal("adapters as lsscsi tells of its hosts",
          [(f"host{number}", host["port_state"], host["speed"]) for number, host in tools.hosts.items()
           if name_of(host["port_name"]) in own],
          [(hba["HBAName"], hba["LinkStatus"], hba["LinkSpeed"]) for hba in hbas])
    equal("LUNs as lsscsi tells of its disks",
          [(name_of(tools.hosts[place[1].split(":")[0]]["port_name"]), *map(int, place[1].split(":")[1:]),
            name_of(disk["port_name"]), fcid(disk["port_id"]), place[3])
           for place, disk in tools.disks if place[2] == "disk"],
          [(lun["PortWorldWidePortName"], lun["BusNumber"], lun["TargetNumber"], lun["ID"],
            lun["TargetWorldWidePortName"], fcid(lun["FCID"]), lun["OSDeviceName"]) for lun in luns])

    # Virtual ports are told of behind their adapter.
    on_pci = {hba["DeviceID"] for hba in hbas if hba["BusInformation"]}
    equal("ports as fcoeadm -i tells of them",
          [(port["Symbolic Name"], name_of(port["Node Name"]), name_of(port["Port Name"]), name_of(port["Fabric Name"]),
            fcid(port["FC-ID (Port ID)"])) for port in tools.adapters],
          [(port["Name"], port["WorldWideNodeName"], port["WorldWidePortName"], port["FabricName"], fcid(port["FCID"]))
           for port in ports if port["DeviceID"] in on_pci])
    equal("adapters as fcoeadm -i tells of them",
          [(port["Symbolic Name"], port["OS Device Name"], port["Speed"], port["State"]) for port in tools.adapters
           if name_of(port["Port Name"]) in own],
          [(hba["Name"], hba["HBAName"], hba["LinkSpeed"], hba["LinkStatus"]) for hba in hbas
           if hba["DeviceID"] in on_pci])

    there = [target for target in targets if target["TargetType"] != STATES["Not Present"]]
    equal("targets as fcoeadm -l tells of them",
          [(target["Interface"], target["OS Device Name"], name_of(target["Node Name"]), name_of(target["Port Name"]),
            fcid(target["FC-ID (Port ID)"]), int(target["Target ID"]), STATES[target["State"]])
           for target, _ in tools.targets],
          [(target["DeviceID"], target["Name"], target["WorldWideNodeName"], target["WorldWidePortName"],
            fcid(target["FCID"]), target["ScsiTarget"], target["TargetType"]) for target in there])
    online = {(target["PortWorldWidePortName"], target["WorldWidePortName"]) for target in there
              if target["TargetType"] == STATES["Online"]}
    equal("LUNs as fcoeadm -l tells of them",
          [(target["Interface"], name_of(target["Port Name"]), int(lun["LUN ID"]), "/dev/" + lun["OS Device Name"],
            str(int(lun["Capacity in Blocks"]) * SECTOR), lun["Block Size"].removesuffix(" bytes"),
            lun["Description"].replace("(rev ", "").rstrip(")"))
           for target, shown in tools.targets for lun in shown],
          [(lun["DeviceID"], lun["TargetWorldWidePortName"], lun["ID"], lun["OSDeviceName"], lun["Capacity"],
            lun["BlockSize"], lun["Name"])
           for lun in luns if (lun["PortWorldWidePortName"], lun["TargetWorldWidePortName"]) in online])

    equal("fabrics as fcoeadm -f tells of them",
          [(interface, name_of(fcf["Fabric Name"]), name_of(fcf["Switch Name"]), int(fcf["FCF Priority"]),
            int(fcf["VLAN ID"])) for interface, fcf in tools.forwarders],
          [(fabric["DeviceID"], fabric["FabricName"], fabric["WorldWideNodeName"], fabric["Priority"], fabric["VlanID"])
           for fabric in by_class("FCoEFabric")])
    selected = {interface: name_of(fcf["Switch Name"]) for interface, fcf in tools.forwarders if fcf["Selected"] == "Yes"}
    equal("the fabric of each adapter's port as fcoeadm -f tells of it",
          [(hba["DeviceID"], selected.get(hba["DeviceID"], "")) for hba in hbas],
          [(port["DeviceID"], re.search(r'WorldWideNodeName="(\w*)"', port["Fabric"])[1]) for port in ports
           if port["WorldWidePortName"] in own])
