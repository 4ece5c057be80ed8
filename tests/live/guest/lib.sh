# Functions shared by all scenarios; sourced by init, run by busybox ash.

# busybox ash prefers its own applets to programs in PATH: insist on the real ones
ip() { /bin/ip "$@"; }
lsscsi() { /bin/lsscsi "$@"; }

say() { echo "### $(cut -d' ' -f1 /proc/uptime) $*" | tee -a /tmp/transcript.txt; }

# run a command, show it and its output, keep both in the transcript
run() { { echo "\$ $*"; "$@" 2>&1; echo "(exit $?)"; } | tee -a /tmp/transcript.txt; }

# write a value to a sysfs file and record the kernel's answer
w() { poke "$1" "$2" | tee -a /tmp/transcript.txt; }

# wait_for SECONDS COMMAND...: until COMMAND succeeds, tried five times a second
wait_for() {
    local n=$1 i=0; shift
    while [ $i -lt $((n*5)) ]; do
        "$@" >/dev/null 2>&1 && { say "ok after $((i/5))s: $*"; return 0; }
        sleep .2; i=$((i+1))
    done
    say "gave up after ${n}s: $*"; return 1
}

# ---- quick mode: nothing but the way to the stages that are asked for
quick() { [ "$QUICK" = 1 ]; }
# wanted STAGE...: is one of these stages asked for?
wanted() {
    local s
    for s; do
        case ",$STAGES," in *,$s,*|*,all,*) return 0 ;; esac
    done
    return 1
}
# need STAGE...: does this part of a scenario have to run? always, but in quick
# mode only on the way to one of these stages
need() { ! quick || wanted "$@"; }
# nap SECONDS: let things settle (not in quick mode)
nap() { quick || sleep $1; }

load_modules() {
    for m in crc32c_generic crct10dif_generic vmxnet3 virtio_net veth 8021q macvlan \
         scsi_transport_fc libfc libfcoe fcoe sd_mod sg; do
        modprobe $m || say "modprobe $m failed"
    done
    # LIO is configured through configfs
    mount -t configfs configfs /sys/kernel/config 2>/dev/null ||
        { modprobe configfs; mount -t configfs configfs /sys/kernel/config; }
}

# interface names by MAC address: 52:54:00:fc:00:0N -> eth(N-1), ..01:0N -> sw(N-1)
name_interfaces() {
    local i mac n
    for i in /sys/class/net/*; do
        i=${i##*/}; mac=$(cat /sys/class/net/$i/address)
        case $mac in
        52:54:00:fc:00:0*) ip link set $i name x${mac##*:} ;;
        52:54:00:fc:01:0*) ip link set $i name y${mac##*:} ;;
        esac
    done
    for n in 1 2 3 4; do
        [ -e /sys/class/net/x0$n ] && ip link set x0$n name eth$((n-1))
        [ -e /sys/class/net/y0$n ] && ip link set y0$n name sw$((n-1))
    done
    echo $(ls /sys/class/net) | tee -a /tmp/transcript.txt
}

# ctlr IF -> path of the FCoE controller on IF;  host_of IF -> hostN
ctlr() { ls -d /sys/class/net/$1/ctlr_* 2>/dev/null | head -1; }
host_of() { local h; h=$(ls -d $(ctlr $1)/host* 2>/dev/null | head -1); echo ${h##*/}; }
attr() { cat /sys/class/fc_host/$1/$2 2>/dev/null; }
is_attr() { [ "$(attr $1 $2)" = "$3" ]; }
has_ctlr() { [ -n "$(ctlr $1)" ]; }
has_rport() { ls -d /sys/class/fc_remote_ports/rport-${1#host}:* >/dev/null 2>&1; }
# number of disks below a scsi host that have come to their block devices
ndisks() { ls -d /sys/class/scsi_disk/${1#host}:*/device/block/* 2>/dev/null | wc -l; }
has_disks() { [ "$(ndisks $1)" -ge $2 ]; }
# fcfs_are N: are N forwarders known?
fcfs_are() { [ "$(ls -d /sys/bus/fcoe/devices/fcf_* 2>/dev/null | wc -l)" = $1 ]; }
# The kernel tells of a carrier some time after it came or went.
operstate() { cat /sys/class/net/$1/operstate; }
# is_up HOST IF: is the port logged in, with its targets?
is_up() { is_attr $1 port_state Online && [ "$(operstate $2)" = up ] && targets_are Online $1; }
# is_down HOST IF: is the link known to be down, and are the targets that were there blocked?
is_down() {
    is_attr $1 port_state Linkdown && case $(operstate $2) in down | lowerlayerdown) ;; *) false ;; esac && targets_are Blocked $1
}
# targets_are STATE HOST: is every remote port with disks in this state?
targets_are() {
    local r
    for r in /sys/class/fc_remote_ports/rport-${2#host}:*; do
        [ -e $r/roles ] && grep -q Target $r/roles || continue
        grep -q "$1" $r/port_state || return 1
    done
}
# no_remote_port WWPN: is no remote port of this name there any more?
no_remote_port() { ! grep -q "0x$1" /sys/class/fc_remote_ports/*/port_name; }
# dev_loss_set HOST SECONDS: sets it for every remote port of the host. A blocked port refuses it and keeps the default of
# 60 seconds, which is what happens on a machine so busy that the port is blocked between two looks at it: try again then.
dev_loss_set() {
    local r
    for r in /sys/class/fc_remote_ports/rport-${1#host}:*; do
        [ -e $r ] || continue
        w $r/dev_loss_tmo $2
        [ "$(cat $r/dev_loss_tmo)" = $2 ] || return 1
    done
}
# have all remote ports with disks been given up, and the disks with them?
targets_gone() {
    ! ls -d /sys/class/scsi_disk/* >/dev/null 2>&1 && ! grep -q Blocked /sys/class/fc_remote_ports/*/port_state
}

# fcoe_create IF [MODE]: the ctlr_create way (create disabled, set mode, enable)
fcoe_create() {
    w /sys/bus/fcoe/ctlr_create $1
    wait_for 10 has_ctlr $1
    [ -z "$2" ] || w $(ctlr $1)/mode $2
}
fcoe_enable() { w $(ctlr $1)/enabled 1; }

# ---- LIO
T=/sys/kernel/config/target
# lio_disk N NAME BYTES SERIAL: fileio backstore on a sparse file
lio_disk() {
    mkdir -p /luns $T/core/fileio_$1/$2
    truncate -s $3 /luns/$2
    echo "fd_dev_name=/luns/$2,fd_dev_size=$3" > $T/core/fileio_$1/$2/control
    echo "$4" > $T/core/fileio_$1/$2/wwn/vpd_unit_serial
    echo 1 > $T/core/fileio_$1/$2/enable
    [ -z "$5" ] || echo "$5" > $T/core/fileio_$1/$2/attrib/block_size
}
# lio_tpg WWPN LUNS...: target port with these backstores ("N/NAME") as LUN 0..
lio_tpg() {
    local t=$T/fc/$1/tpgt_1 n=0; shift
    mkdir -p $t
    for b in "$@"; do
        mkdir -p $t/lun/lun_$n
        ln -s $T/core/fileio_$b $t/lun/lun_$n/backstore
        n=$((n+1))
    done
}
# lio_acl WWPN INITIATOR N: initiator port may use LUN 0..N-1
lio_acl() {
    local t=$T/fc/$1/tpgt_1 n=0
    mkdir -p $t/acls/$2
    while [ $n -lt $3 ]; do
        mkdir -p $t/acls/$2/lun_$n
        ln -s $t/lun/lun_$n $t/acls/$2/lun_$n/lun
        n=$((n+1))
    done
}

# ---- snapshots
# snap NAME: copy what the kernel publishes to /out/snap/NAME
snap() {
    [ "$SNAPSHOTS" = 1 ] || return 0
    local d=/out/snap/$1 m p skip x i
    mkdir -p $d
    say "snapshot $1"
    set -- $d
    m=""
    for x in fcoe libfcoe libfc scsi_transport_fc scsi_mod sd_mod sg tcm_fc target_core_mod \
         vmxnet3 virtio_net virtio_pci veth 8021q; do
        [ -d /sys/module/$x ] && m="$m /sys/module/$x"
    done
    # of the PCI devices only the network adapters (and their virtio children)
    p="/sys/bus/virtio/drivers/virtio_net"
    for i in /sys/class/net/*/device; do
        [ -e $i ] || continue
        x=$(readlink -f $i)
        while case $x in */pci0000:00/*) true ;; *) false ;; esac; do
            p="$p $x"
            [ -L /sys/bus/pci/devices/${x##*/} ] && p="$p /sys/bus/pci/devices/${x##*/}"
            [ -L /sys/bus/virtio/devices/${x##*/} ] && p="$p /sys/bus/virtio/devices/${x##*/}"
            [ -L $x/driver ] && case $(readlink -f $x/driver) in
            */pci/drivers/*) p="$p $(readlink -f $x/driver)" ;;
            esac
            x=${x%/*}
        done
    done
    # and nothing of the disk through which the results leave the guest
    skip=
    for i in /sys/block/vd*; do
        [ -e $i ] || continue
        skip="$skip -x ${i##*/}"
        x=$(readlink -f $i/device)
        while case $x in */pci0000:00/*) true ;; *) false ;; esac; do
            skip="$skip -x ${x##*/}"
            x=${x%/*}
        done
    done
    treecopy -x rom -x resource0 -x resource1 -x resource2 -x resource3 -x resource4 \
        -x resource5 -x resource0_wc -x resource2_wc -x resource4_wc \
        -x sections -x notes -x holders $skip $d/root \
        /sys/bus/fcoe /sys/bus/scsi $p \
        /sys/class/fc_host /sys/class/fc_remote_ports /sys/class/fc_transport \
        /sys/class/fc_vports /sys/class/scsi_host /sys/class/scsi_device /sys/class/scsi_disk \
        /sys/class/scsi_generic /sys/class/bsg /sys/class/net /sys/class/block /sys/block \
        /sys/devices/virtual/net \
        $m /proc/net/vlan /proc/net/dev /proc/scsi /proc/version /proc/partitions /proc/modules \
        /proc/uptime /proc/sys/kernel/osrelease /proc/sys/kernel/ostype /proc/sys/kernel/version \
        /proc/sys/kernel/hostname /proc/cmdline | tee -a /tmp/transcript.txt
    mv $d/root.modes $d/MODES.txt; mv $d/root.errors $d/ERRORS.txt
    {
        for c in "/bin/ip -d link" "/bin/lsscsi -g -t" "/bin/lsscsi -H -t -L" "/bin/lsscsi -t -L" "fcoeadm -i" "fcoeadm -t" "fcoeadm -l" \
             "fcoeadm -f" "cat /proc/net/vlan/config"; do
            echo "===== $c"; timeout 20 $c 2>&1
        done
        for i in /sys/class/fc_host/*; do
            echo "===== fc_host ${i##*/}"; grep -s . $i/* $i/statistics/* 2>/dev/null
        done
        for i in /sys/bus/fcoe/devices/* /sys/class/fc_remote_ports/* /sys/class/fc_transport/* /sys/class/fc_vports/*; do
            [ -d $i ] || continue
            echo "===== ${i}"; grep -s . $i/* $i/lesb/* 2>/dev/null
        done
    } > $d/COMMANDS.txt 2>&1
}

# stage NAME: run the user's command (if any) in this state; the end, if this was the stage to stop after
stage() {
    if wanted $1; then
        [ "$SHELL_AT" = "$1" ] && { say "shell at stage $1 (exit to go on)"; setsid cttyhack sh; }
        [ -z "$CMD" ] || user_command $1
    fi
    [ "$UNTIL" != "$1" ] || finish
}
user_command() {
    local d=/out/cmd/$1
    mkdir -p $d
    say "stage $1: running: $CMD"
    (cd /extra && GUEST_STAGE=$1 GUEST_OUT=$d timeout ${CMD_TIMEOUT:-240} sh -c "$CMD" \
        >$d/stdout 2>$d/stderr; echo $? > $d/rc)
    cat $d/stdout; sed 's/^/stderr: /' $d/stderr
    say "stage $1: exit $(cat $d/rc)"
}

# kernel messages worth keeping: FCoE, SCSI, VLANs, network interfaces
DMESG='\] ( rport-|host[0-9]+:|scsi |sd |SCSI |FC Virtual|fcoe|libfcoe|8021q|device [a-z0-9.]+ (entered|left)|(vmxnet3|virtio_net) .*(renamed|NIC Link)|IPv6: ADDRCONF)'

# finish: hand /out back through the output disk and power off
finish() {
    mkdir -p /out/log
    dmesg | grep -E "$DMESG" > /out/log/dmesg.txt
    cp /tmp/transcript.txt /out/log/ 2>/dev/null
    [ "$SHELL_AT" = end ] && { say "shell (exit to power off)"; setsid cttyhack sh; }
    # the output disk is the virtio disk whose serial number is guestout
    for d in /sys/block/vd*; do
        [ "$(cat $d/serial 2>/dev/null)" = guestout ] || continue
        say "writing /out to ${d##*/} ($(du -sk /out | cut -f1) KiB)"
        tar -C /out -cf "/dev/${d##*/}" . 2>&1 | head -3
        sync
    done
    say "end"
    sync
    exec poweroff -f
}

# hmp LINE: give QEMU's monitor a command (it is wired to the second serial port)
hmp() {
    say "qemu: $*"
    if [ ! -e /tmp/hmp.log ]; then # raw, or the tty would echo the monitor's answer back
        exec 9<>/dev/ttyS1
        stty raw -echo <&9
        cat <&9 >/tmp/hmp.log 2>&1 &
        sleep 1
        printf '\r\n' >&9 # ends whatever was echoed before "raw"
        sleep 1
    fi
    printf '%s\r\n' "$*" >&9
}

# cable IF NIC on|off: plug or pull the cable of an emulated adapter
cable() {
    local i=0 want=$([ $3 = on ] && echo 1 || echo 0)
    while [ $i -lt 5 ]; do
        hmp set_link $2 $3
        wait_for 5 grep -q $want /sys/class/net/$1/carrier && return 0
        i=$((i+1))
    done
}
