"""What clients were told that asked without end while devices went and came back (`loops`): every answer is whole, and says
nothing of a device that it never was.

An instance is held against those of the same identity at the stages before and after, which were compared with the kernel's
files: it has the same properties, each with one of the values that it had at a stage or with one that it passes through.
"""

import json
import os
import re

from compare import CLASSES, identity, parse

HBA, PORT, FABRIC, TARGET, LUN, VLAN, STATISTICS = CLASSES

# Values in between the stages, as patterns.
PASSING = {
    (HBA, "LinkStatus"): "Linkdown|Offline|Online",
    (HBA, "FCID"): "0x0|0xFFFFFFFF|0x10[0-9A-F]{2,3}",
    (PORT, "FCID"): "0x0|0xFFFFFFFF|0x10[0-9A-F]{2,3}",
    (PORT, "Fabric"): r'Zarn_FCoEFabric\.DeviceID="(eth[01]\.1002|veth[01])",WorldWideNodeName="(20000000fc0000(0a|aa|0b))?"',
    (PORT, "FabricName"): "",
    (TARGET, "FabricName"): "",
    (TARGET, "FCID"): "0xFFFFFFFF|0x10[0-9A-F]{2,3}",
    (TARGET, "TargetType"): "1|2|3",
    (TARGET, "Vendor"): "",
    (TARGET, "SerialNumber"): r"(naa\.6001405ed[012]0+)?",  # of its first disk, while disks go one after the other
    (LUN, "FabricName"): "",
    (LUN, "FCID"): "0xFFFFFFFF|0x10[0-9A-F]{2,3}",
    (LUN, "OSDeviceName"): "(/dev/sd[a-z])?",
    (LUN, "Capacity"): "",
    (LUN, "BlockSize"): "",
    (VLAN, "Status"): "Up|Down",
    (VLAN, "StatusID"): "1|2",
}
# Devices that stay, whatever happens to their cables.
CONSTANT = (HBA, PORT, VLAN)
ENUMERATED = (HBA, PORT, FABRIC, TARGET, LUN, VLAN)
LEAST_ROUNDS = 3


class Known:
    """The instances of a class at all stages."""

    def __init__(self, stages, class_name):
        self.values = {}  # by identity and property
        self.always = None  # the identities that every stage had
        for instances in stages:
            found = instances.get(class_name, [])
            keys = {identity(class_name, instance) for instance in found}
            self.always = keys if self.always is None else self.always & keys
            for instance in found:
                known = self.values.setdefault(identity(class_name, instance), {})
                for name, value in instance.items():
                    known.setdefault(name, []).append(value)

    def faults(self, class_name, instances):
        keys = [identity(class_name, instance) for instance in instances]
        if len(set(keys)) != len(keys):
            yield f"an instance is there twice: {keys}"
        if class_name in CONSTANT and not self.always <= set(keys):
            yield f"not there: {sorted(self.always - set(keys))}"
        for key, instance in zip(keys, instances):
            if key not in self.values:
                yield f"{key} was there at no stage"
                continue
            if set(instance) != set(self.values[key]):
                yield f"{key} has other properties: {sorted(set(instance) ^ set(self.values[key]))}"
                continue
            for name, value in instance.items():
                passing = PASSING.get((class_name, name))
                if value not in self.values[key][name] and not (
                        passing is not None and re.fullmatch(passing, str(value))):
                    yield f"{key}: {name} was never {value!r}, but {self.values[key][name]}"


def torn_disks(instances):
    """A disk has its device, its capacity and its block size, or none of the three."""
    for lun in instances:
        parts = [lun.get(name) for name in ("OSDeviceName", "Capacity", "BlockSize")]
        if any(parts) and not all(parts):
            yield f"LUN {lun.get('ID')} of {lun.get('DeviceID')} is half a disk: {parts}"


def check_enumerations(checks, answers, stages):
    known = {class_name: Known(stages, class_name) for class_name in ENUMERATED}
    requests = sorted(name.removesuffix(".rc") for name in os.listdir(answers.folder) if re.match(r"\d+-.*\.rc$", name))
    for request in requests:
        class_name = request.split("-", 1)[1]
        what = f"{answers.name}: {request}"
        checks.equal(f"{what}: exit code and errors", answers.outcome(request), ("0", ""))
        try:
            instances = parse(answers.output(request))
        except ValueError as error:
            checks.fail(f"{what}: the answer is not whole: {error}")
            continue
        faults = list(known[class_name].faults(class_name, instances))
        if class_name == LUN:
            faults += torn_disks(instances)
        for fault in faults:
            checks.fail(f"{what}: {fault}")
        checks.passed += not faults
    checks.true(f"{answers.name}: enumerations of each class", len(requests) >= LEAST_ROUNDS * len(ENUMERATED), len(requests))


def view_of(answers, request):
    """The report of one process that enumerated: (lines, {class: texts of the instances of its last round})."""
    report, _, view = answers.output(request).partition("\nview\n")
    texts = {}
    for part in view.split("enumeration of ")[1:]:
        class_name, _, found = part.partition("\n")
        if class_name == STATISTICS:
            found = re.sub(r"\n\tValue = \d+;", "", found)  # they go on counting
        texts[class_name] = [text.strip() for text in re.split(r"^(?=instance of )", found, flags=re.M) if text.strip()]
    return report.splitlines(), texts


def check_steady(checks, answers, now):
    """One process that enumerated every class all the time. `now` are the instances by class that the kernel's files agreed
    with when it ended."""
    name = f"{answers.name}: steady"
    for request in ("steady", "fresh"):
        checks.equal(f"{answers.name}: {request}: exit code and errors", answers.outcome(request), ("0", ""))
    lines, view = view_of(answers, "steady")
    _, fresh = view_of(answers, "fresh")
    for kind in ("failures", "torn records"):
        seen = [line for line in lines if line.startswith((kind + ":", kind.split()[0].removesuffix("s") + ":"))]
        checks.equal(f"{name}: {kind}", seen, [f"{kind}: 0"])
    report = "\n".join(lines)
    rounds = re.search(r"^rounds: (\d+)$", report, re.M)
    checks.true(f"{name}: rounds", rounds and int(rounds[1]) >= LEAST_ROUNDS, lines[-30:])
    files = re.search(r"^open files: (\d+) at the begin, (\d+) at most, (\d+) at the end$", report, re.M)
    checks.true(f"{name}: open files do not become more", files and int(files[1]) >= int(files[2]) >= int(files[3]) > 0,
                files and files[0])
    counts = {found[1]: (int(found[2]), int(found[3]))
              for found in re.finditer(r"^instances of (\w+): (\d+) to (\d+)$", report, re.M)}
    checks.equal(f"{name}: disks came and went", counts.get(LUN), (0, len(now.get(LUN, []))))
    checks.equal(f"{name}: classes of its view", sorted(view), sorted(counts))
    for class_name, instances in now.items():
        checks.equal(f"{name}: {class_name}: instances at its end", len(view.get(class_name, [])), len(instances))
    for class_name in sorted(set(view) | set(fresh)):
        checks.equal(f"{name}: {class_name}: what a fresh process is told", fresh.get(class_name), view.get(class_name))
    if rounds and files:
        print(f"{name}: {rounds[0]}, {files[0]}, " + ", ".join(line for line in lines if re.match("(failures|torn rec)", line)))


def check_watch(checks, answers, adapters):
    """One process that looked all the time: its samples are whole, its counters grow, its files do not."""
    name = f"{answers.name}: watch"
    checks.equal(f"{name}: exit code and errors", answers.outcome("watch"), ("130", "orlwmi: interrupted\n"))
    samples = {}  # by time: {(adapter, statistic): value}
    try:
        for line in answers.output("watch").splitlines():
            row = json.loads(line)
            samples.setdefault(row["Time"], {})[row["DeviceID"], row["Statistic"]] = int(row["Value"])
    except (ValueError, KeyError) as error:
        checks.fail(f"{name}: a sample is not whole: {error!r}")
        return
    in_order = [samples[time] for time in sorted(samples)]
    checks.true(f"{name}: samples", len(in_order) >= LEAST_ROUNDS, len(in_order))
    if not in_order:
        return
    counters = set(in_order[0])
    for number, sample in enumerate(in_order[:-1]):
        # The last one may have been interrupted.
        checks.equal(f"{name}: counters of sample {number}", sorted(sample), sorted(counters))
    for adapter in adapters:
        frames = [sample.get((adapter, "rx_frames"), 0) for sample in in_order[:-1]]
        checks.true(f"{name}: frames of {adapter} never become fewer", frames == sorted(frames), frames)
        checks.true(f"{name}: frames of {adapter} come again", frames[-1] > frames[0], frames)
    counts = [int(count) for count in answers.read("fds").split()]
    checks.true(f"{name}: files that were open", len(counts) >= LEAST_ROUNDS and 0 < min(counts[-2:]) <= min(counts[:2]),
                counts)


def check(checks, answers, now, stages):
    """`now` are the instances by class of the stage at which it ended, `stages` those of all stages."""
    if not os.path.isdir(answers.folder):
        checks.fail(f"{answers.name}: the guest left nothing")
        return
    check_enumerations(checks, answers, stages)
    check_steady(checks, answers, now)
    check_watch(checks, answers, [hba["DeviceID"] for hba in now.get(HBA, [])])
