# Scenario fabric, the host: two PCI network adapters (eth0 = vmxnet3 1 Gb, eth1 = virtio-net 10 Gb), an FCoE VLAN 1002 on
# each, one FCoE controller on each VLAN, two fabrics, the same three LUNs visible through both.

for i in 0 1; do
    ip link set eth$i mtu 2500; ip link set eth$i up
done
# does the SAN guest answer on both cables?
both_there() { [ "$(timeout 10 fipvlan eth0 eth1 | grep -c 52:54:00:fc:01:0)" = 2 ]; }
nap 3
quick || run timeout 20 fipvlan eth0 eth1
for i in 0 1; do
    ip link add link eth$i name eth$i.1002 type vlan id 1002
    ip link set eth$i.1002 up
done
if need nofcf; then # no forwarder answers at first
    wait_for 30 both_there
    run fcfsim -C eth0.1002 hang
    run fcfsim -C eth1.1002 hang
fi
fcoe_create eth0.1002 fabric
fcoe_create eth1.1002
H0=$(host_of eth0.1002) H1=$(host_of eth1.1002)
say "eth0.1002=$H0 eth1.1002=$H1"
snap fabric-0-created
stage created
fcoe_enable eth0.1002
fcoe_enable eth1.1002
if need nofcf; then
    if quick; then
        wait_for 20 is_attr $H0 port_state Offline
        wait_for 20 is_attr $H1 port_state Offline
    else
        sleep 5
    fi
    snap fabric-1-no-fcf
    stage nofcf
    run fcfsim -C eth0.1002 resume
    run fcfsim -C eth1.1002 resume
fi
wait_for 60 is_attr $H0 port_state Online
wait_for 60 is_attr $H1 port_state Online
wait_for 60 has_disks $H0 3
wait_for 60 has_disks $H1 3
wait_for 60 fcfs_are 3
nap 3
run lsscsi -g -t
snap fabric-2-up
stage up

if need npiv; then
    say "NPIV"
    w /sys/class/fc_host/$H0/vport_create nonsense
    w /sys/class/fc_host/$H0/vport_create 2101525400fc0001:2001525400fc0001
    V=$(ls -d /sys/class/fc_vports/vport-${H0#host}:* | head -1)
    wait_for 40 grep -q Active $V/vport_state
    VH=$(ls -d $(readlink -f $V)/device/host* $(readlink -f $V/device)/host* 2>/dev/null | head -1); VH=${VH##*/}
    say "vport $V -> $VH"
    [ -z "$VH" ] || { wait_for 40 is_attr $VH port_state Online; wait_for 40 has_disks $VH 2; }
    w $V/symbolic_name "test vport"
    w /sys/class/fc_host/$H0/vport_create 2101525400fc0001:2001525400fc0001
    snap fabric-3-npiv
    stage npiv
    if quick; then # do not let the adapter's own port wait a minute for the port that is deleted
        wait_for 40 dev_loss_set $H0 3
    else
        w $V/vport_disable 1
        nap 3
        snap fabric-4-npiv-disabled
        w $V/vport_disable 0
        nap 5
        run grep -s . $V/vport_state $V/vport_last_state
    fi
    w /sys/class/fc_host/$H0/vport_delete 2101525400fc0009:2001525400fc0009
    w /sys/class/fc_host/$H0/vport_delete 2101525400fc0001:2001525400fc0001
    quick && wait_for 60 no_remote_port 2101525400fc0001
    nap 3
fi

if need io; then
    say "I/O"
    for h in $H0 $H1; do
        for d in /sys/class/scsi_disk/${h#host}:*/device/block/*; do
            run dd if=/dev/${d##*/} of=/dev/null bs=64k count=$(quick && echo 16 || echo 64)
        done
    done
    run sg_inq /dev/$(basename $(ls -d /sys/class/scsi_disk/${H0#host}:0:*:0/device/block/* | head -1))
    snap fabric-5-io
    stage io
fi

C0=$(ctlr eth0.1002)
if ! quick; then
    say "writes"
    F=$(ls -d $C0/fcf_* | head -1)
    w $C0/mode vn2vn
    w $C0/fcf_dev_loss_tmo 30
    w $F/dev_loss_tmo 40
    w $F/priority 1
    for R in /sys/class/fc_remote_ports/rport-${H0#host}:*; do
        run grep -s . $R/port_state $R/port_id $R/roles
        w $R/dev_loss_tmo 15
    done
    w /sys/class/fc_host/$H0/issue_lip 1
    wait_for 60 is_attr $H0 port_state Online
    wait_for 60 has_disks $H0 3
    run fcfsim -C eth1.1002 cvl
    sleep 10
    wait_for 60 is_attr $H1 port_state Online
    snap fabric-6-after-lip-and-cvl
fi

if quick; then # whoever asks at stages fcflost and linkdown is to find the ports still blocked, however long it takes
    wait_for 40 dev_loss_set $H0 600
    wait_for 40 dev_loss_set $H1 600
fi
if need fcflost; then
    say "the forwarder of fabric A stops advertising"
    run fcfsim -C eth0.1002 hang
    if quick; then
        wait_for 40 is_attr $H0 port_state Offline
        wait_for 40 targets_are Blocked $H0
    else
        sleep 26
    fi
    run grep -s . /sys/bus/fcoe/devices/fcf_*/state /sys/class/fc_host/*/port_state
    snap fabric-7-fcf-lost
    stage fcflost
    run fcfsim -C eth0.1002 resume
    wait_for 60 is_attr $H0 port_state Online
    wait_for 60 has_disks $H0 3
fi

# (in quick mode this is reached only on the way to one of the stages below)
wait_for 40 is_up $H0 eth0.1002
wait_for 40 is_up $H1 eth1.1002
say "cable of eth1 out"
if ! quick; then
    wait_for 40 dev_loss_set $H0 15
    wait_for 40 dev_loss_set $H1 15
fi
cable eth1 nic1 off
wait_for 20 is_down $H1 eth1.1002
nap 2
run grep -s . /sys/class/net/eth1/carrier /sys/class/net/eth1/operstate /sys/class/fc_host/*/port_state /sys/class/fc_remote_ports/*/port_state /sys/bus/fcoe/devices/fcf_*/state
snap fabric-8-linkdown-blocked
stage linkdown
if quick && wanted devloss; then # a blocked port keeps its timeout: the link has to come back for another one
    cable eth1 nic1 on
    wait_for 60 is_up $H1 eth1.1002
    wait_for 60 dev_loss_set $H0 5
    wait_for 60 dev_loss_set $H1 5
    cable eth1 nic1 off
fi
say "cable of eth0 out, too"
cable eth0 nic0 off
if ! quick; then
    sleep 35 # time for the rports (15 s) and an FCF (30 s) to be given up, not for the one with 40 s
elif wanted devloss; then
    wait_for 90 targets_gone
    wait_for 20 is_down $H0 eth0.1002
    wait_for 20 is_down $H1 eth1.1002
fi
run grep -s . /sys/class/fc_host/*/port_state /sys/class/fc_remote_ports/*/port_state /sys/bus/fcoe/devices/fcf_*/state
snap fabric-9-linkdown-devloss
stage devloss
cable eth0 nic0 on
cable eth1 nic1 on
wait_for 60 is_attr $H0 port_state Online
wait_for 60 is_attr $H1 port_state Online
wait_for 60 has_disks $H0 3
wait_for 60 has_disks $H1 3
wait_for 60 is_up $H0 eth0.1002
wait_for 60 is_up $H1 eth1.1002
wait_for 60 fcfs_are 3
nap 2
snap fabric-10-linkup
stage linkup
w $C0/enabled 0
w $C0/mode vn2vn
w $C0/mode fabric
w /sys/bus/fcoe/ctlr_destroy ${C0##*/} # the name in the ABI document: refused
w /sys/bus/fcoe/ctlr_destroy eth0.1002
w /sys/bus/fcoe/ctlr_destroy eth1.1002
sleep 5
run ls /sys/bus/fcoe/devices /sys/class/fc_host
snap fabric-11-destroyed
