"""Compares what the client printed with what the kernel's files say."""

import json

from kernel_tree import CLASSES, IDENTITY


class Comparison:
    """Counts the values that agree and keeps a line for each thing that does not.

    `before` is the tree; `after` another one, of a running kernel, copied after the client was asked: a counter must then be
    between the two, and all else must be the same in both.
    """

    def __init__(self, before, after=None):
        self.trees = [before, after or before]
        self.agreed = 0
        self.differences = []

    def differ(self, *words):
        self.differences.append(": ".join(words))

    def compare(self, class_name, answer):
        """`answer` is the client's JSON text. Returns how many instances the files say there are."""
        before, after = (tree.instances(class_name) for tree in self.trees)
        try:
            seen = parse(answer)
        except ValueError as error:
            self.differ(class_name, f"the client's answer is no list of instances: {error}")
            return len(before)
        keys = [[identity(class_name, instance) for instance in instances] for instances in (before, after)]
        if keys[0] != keys[1]:
            self.differ(class_name, "the kernel's devices changed while the client was asked",
                        f"{told(keys[0])} became {told(keys[1])}")
            return len(before)
        self._compare_keys(class_name, keys[0], [identity(class_name, instance) for instance in seen])
        answers = {identity(class_name, instance): instance for instance in seen}
        for key, first, last in zip(keys[0], before, after):
            if key in answers:
                self._compare_properties(f"{class_name}: {told([key])}", first, last, answers[key])
        return len(before)

    def _compare_keys(self, class_name, expected, seen):
        for key in expected:
            if key not in seen:
                self.differ(class_name, told([key]), "the kernel's files have it, the client has not")
        for position, key in enumerate(seen):
            if key not in expected:
                self.differ(class_name, told([key]), "the client has it, the kernel's files have not")
            elif key in seen[:position]:
                self.differ(class_name, told([key]), "the client has it twice")
        if seen != expected and sorted(map(str, seen)) == sorted(map(str, expected)):
            self.differ(class_name, "the order", f"expected {told(expected)}", f"found {told(seen)}")

    def _compare_properties(self, where, before, after, seen):
        for name in seen:
            if name not in before:
                self.differ(where, name, f"the kernel's files say nothing of it, the client says {seen[name]!r}")
        for name, first in before.items():
            last = after[name]
            if name not in seen:
                self.differ(where, name, f"expected {first.value!r} ({first.source})", "the client has no such property")
            elif first.counts and isinstance(seen[name], int) and first.value <= seen[name] <= last.value:
                self.agreed += 1
            elif first.counts and first.value != last.value:
                self.differ(where, name, f"expected {first.value} to {last.value} ({first.source})",
                            f"found {seen[name]!r}")
            elif first.value != last.value:
                self.differ(where, name, f"the kernel's value changed while the client was asked ({first.source})",
                            f"{first.value!r} became {last.value!r}, found {seen[name]!r}")
            elif seen[name] != first.value or type(seen[name]) is not type(first.value):
                self.differ(where, name, f"expected {first.value!r} ({first.source})", f"found {seen[name]!r}")
            else:
                self.agreed += 1


def identity(class_name, instance):
    values = (instance.get(key) for key in IDENTITY[class_name])
    return tuple(getattr(value, "value", value) for value in values)


def told(keys):
    return ", ".join(" ".join(map(str, key)) for key in keys) or "none"


def unique(pairs):
    names = [name for name, _ in pairs]
    twice = {name for name in names if names.count(name) > 1}
    if twice:
        raise ValueError(f"an instance has {', '.join(sorted(twice))} twice")
    return dict(pairs)


def parse(answer):
    """The instances, without the system's properties."""
    found = json.loads(answer, object_pairs_hook=unique)
    if not isinstance(found, list) or not all(isinstance(instance, dict) for instance in found):
        raise ValueError("it is something else")
    return [{name: value for name, value in instance.items() if not name.startswith("__")} for instance in found]


__all__ = ["CLASSES", "Comparison", "identity", "parse"]
