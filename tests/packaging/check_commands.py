#!/usr/bin/env python3
"""Checks that the manual page and the shell completions say what the program's --help says.

usage: check_commands.py PROGRAM PACKAGING_FOLDER
       check_commands.py --self-test
Every sub-command and option of the help has to be in the manual page and in each completion, and
nothing else may be there. Exit status 1 when something differs.
"""
import pathlib
import re
import subprocess
import sys

OPTION = re.compile(r"(?<![\w-])--?[a-z][a-z-]*")


def help_of(program, *command):
    run = subprocess.run([program, *command, "--help"], capture_output=True, text=True, check=True)
    return run.stdout


def section(text, title):
    """The indented lines below a title such as "Options:"."""
    found = re.search(rf"^{title}:\n((?:  .*\n)+)", text, re.M)
    return found.group(1) if found else ""


def options_of(text):
    """The options that stand first in their line, in all their forms."""
    forms = [re.match(r"  (-[^ ]*)", line) for line in section(text, "Options").splitlines()]
    return {option for form in forms if form for option in form.group(1).split(",")}


def commands_of(text):
    return set(re.findall(r"^  (\w+) ", section(text, "Subcommands"), re.M))


def said_by_program(program):
    """Sub-command ("" for none) to its options."""
    text = help_of(program)
    said = {"": options_of(text)}
    for command in commands_of(text):
        said[command] = options_of(help_of(program, command))
    return said


def plain(roff):
    return re.sub(r"\\f[A-Z]", "", roff.replace("\\-", "-").replace('"', ""))


def said_by_manual(roff):
    body = roff[roff.index(".SH SUB-COMMANDS"):roff.index('.SH "EXIT STATUS"')]
    commands_part, options_part = body.split(".SH OPTIONS")
    said = {"": set()}
    for command in re.findall(r"^\.TP\n\.B (\w+)$", commands_part, re.M):
        said[command] = set()
    for part in re.split(r"^\.SS ", options_part, flags=re.M):
        heading, _, text = part.partition("\n")
        owners = re.findall(r"\w+", heading.replace('"Of', "")) if heading else list(said)
        for entry in re.findall(r"^\.TP\n(.*)$", text, re.M):
            for option in OPTION.findall(plain(entry)):
                for owner in owners:
                    if owner != "and" and (option != "--version" or owner == ""):
                        said.setdefault(owner, set()).add(option)
    return said


def said_by_bash(script, commands):
    """Asks the completion itself."""
    def complete(*words):
        code = (f"source '{script}'; COMP_WORDS=({' '.join(words)} -); COMP_CWORD={len(words)}; "
                "_kvxostrace; printf '%s\\n' \"${COMPREPLY[@]}\"")
        run = subprocess.run(["bash", "-c", code], capture_output=True, text=True, check=True)
        return set(run.stdout.split())

    said = {"": complete("kvxostrace")}
    for command in commands:
        said[command] = complete("kvxostrace", command)
    code = (f"source '{script}'; cd /var/empty 2>/dev/null || cd /proc/self/fdinfo; "
            "COMP_WORDS=(kvxostrace ''); COMP_CWORD=1; _kvxostrace; printf '%s\\n' \"${COMPREPLY[@]}\"")
    run = subprocess.run(["bash", "-c", code], capture_output=True, text=True, check=True)
    for command in re.findall(r"^[a-z]+$", run.stdout, re.M):
        said.setdefault(command, set())
    return said


def all_options(said):
    return set().union(*said.values())


def compare(where, expected, found):
    faults = []
    for command in sorted(set(expected) | set(found)):
        if command not in found:
            faults.append(f"{where}: the sub-command {command} is missing")
        elif command not in expected:
            faults.append(f"{where}: there is no sub-command {command}")
        else:
            name = f"kvxostrace {command}".strip()
            for option in sorted(expected[command] - found[command]):
                faults.append(f"{where}: {option} of {name} is missing")
            for option in sorted(found[command] - expected[command]):
                faults.append(f"{where}: {name} has no {option}")
    return faults


def compare_words(where, text, said, pattern):
    """For completions that cannot be run here: which words they know."""
    faults = []
    known = set(re.findall(pattern, text))
    for option in sorted(all_options(said) - known):
        faults.append(f"{where}: {option} is missing")
    for option in sorted(known - all_options(said)):
        faults.append(f"{where}: nothing has the option {option}")
    for command in sorted(set(said) - {""}):
        if not re.search(rf"\b{command}\b", text):
            faults.append(f"{where}: the sub-command {command} is missing")
    return faults


def fish_options(text):
    """The same text with options as they are typed."""
    return re.sub(r"-([sl]) (\w[\w-]*)", lambda m: ("-" if m[1] == "s" else "--") + m[2], text)


def check(program, folder):
    said = said_by_program(program)
    if len(said) < 5 or not all(said.values()):
        return [f"{program} --help was not understood: {said}"]
    completion = folder / "completion"
    zsh = (completion / "_kvxostrace").read_text(encoding="utf-8")
    fish = (completion / "kvxostrace.fish").read_text(encoding="utf-8")
    fish = fish_options("\n".join(line.split(" -d ")[0] for line in fish.splitlines()
                                  if line.startswith("complete")).replace("complete -c", ""))
    fish = re.sub(r" -[nxarFf]\b", "", fish)
    return (compare("manual page", said, said_by_manual((folder / "kvxostrace.1").read_text(encoding="utf-8"))) +
            compare("bash", said, said_by_bash(completion / "kvxostrace.bash", set(said) - {""})) +
            compare_words("zsh", zsh, said, r"(?<![\w-])--?[a-z][a-z-]*(?=[\[,}])") +
            compare_words("fish", fish, said, OPTION.pattern))


def self_test():
    """A missing and a superfluous name are found."""
    manual = ('.SH SUB-COMMANDS\n.TP\n.B info\nText\n.SH OPTIONS\n.TP\n.BR \\-h ", " \\-\\-help\nText\n'
              '.TP\n.B \\-\\-version\nText\n.SS "Of info"\n.TP\n.BI \\-\\-cpu " N"\nText\n.SH "EXIT STATUS"\n')
    said = {"": {"-h", "--help", "--version"}, "info": {"-h", "--help", "--cpu"}}
    assert compare("manual page", said, said_by_manual(manual)) == []
    assert compare("manual page", {**said, "keys": set()}, said_by_manual(manual))
    assert compare("manual page", {**said, "info": {"-h", "--help"}}, said_by_manual(manual))
    assert compare("manual page", {**said, "info": said["info"] | {"--json"}}, said_by_manual(manual))
    assert compare_words("x", "info --cpu", {"info": {"--cpu", "--res"}}, OPTION.pattern)
    assert compare_words("x", "info --cpu --res", {"info": {"--cpu"}}, OPTION.pattern)
    assert compare_words("x", "--cpu", {"info": {"--cpu"}}, OPTION.pattern)


def main():
    if sys.argv[1:] == ["--self-test"]:
        self_test()
        print("commands: missing and superfluous names are found")
        return
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    faults = check(sys.argv[1], pathlib.Path(sys.argv[2]))
    print("\n".join(faults) if faults else "commands: help, manual page and completions agree")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
