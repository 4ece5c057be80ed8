# Scenario vn2vn: two FCoE controllers in VN2VN mode on the two ends of a veth pair. veth0 is the initiator, veth1 the
# target (LIO, three LUNs).

modprobe target_core_mod; modprobe target_core_file; modprobe tcm_fc
ip link add veth0 address 52:54:00:fc:10:00 mtu 2500 type veth peer name veth1 address 52:54:00:fc:10:01 mtu 2500
ip link set veth0 up; ip link set veth1 up
IW=20:00:52:54:00:fc:10:00 TW=20:00:52:54:00:fc:10:01
lio_disk 0 disk0 67108864 test-disk0
lio_disk 1 disk1 134217728 test-disk1
lio_disk 2 disk2 1073741824 test-disk2 4096
lio_tpg $TW 0/disk0 1/disk1 2/disk2
lio_acl $TW $IW 3

fcoe_create veth1 vn2vn
fcoe_create veth0 vn2vn
H0=$(host_of veth0) H1=$(host_of veth1)
say "veth0=$H0 veth1=$H1"
snap vn2vn-0-created
stage created
fcoe_enable veth1
fcoe_enable veth0
wait_for 40 has_rport $H0
wait_for 40 is_attr $H0 port_state Online
wait_for 60 has_disks $H0 3
wait_for 40 is_up $H0 veth0
wait_for 40 is_up $H1 veth1
nap 3
run lsscsi -g -t
snap vn2vn-1-up
stage up

if need io; then
    say "I/O"
    for d in /sys/class/scsi_disk/${H0#host}:*/device/block/*; do
        run dd if=/dev/${d##*/} of=/dev/null bs=64k count=128
    done
    D=$(ls -d /sys/class/scsi_disk/${H0#host}:0:0:0/device/block/*); D=${D##*/}
    run dd if=/dev/zero of=/dev/$D bs=64k count=64 conv=fsync
    snap vn2vn-2-io
    stage io
fi

R=$(ls -d /sys/class/fc_remote_ports/rport-${H0#host}:* | head -1)
C0=$(ctlr veth0)
if quick; then # whoever asks at stage linkdown is to find the ports still blocked, however long it takes
    wait_for 40 dev_loss_set $H0 600
    wait_for 40 dev_loss_set $H1 600
else
    say "writes"
    w $R/dev_loss_tmo 15
    w $R/dev_loss_tmo 0
    w $R/dev_loss_tmo 15
    w $R/fast_io_fail_tmo 5
    w $R/fast_io_fail_tmo off
    w $C0/mode fabric
    w $C0/enabled 2
    w $C0/fip_vlan_responder 2
    w $C0/fcf_dev_loss_tmo 30
    w /sys/class/fc_host/$H0/vport_create 2101525400fc1000:2001525400fc1000
    w /sys/class/fc_host/$H0/vport_create nonsense
    w /sys/class/fc_host/$H0/vport_delete 2101525400fc1000:2001525400fc1000
    w /sys/class/fc_host/$H0/dev_loss_tmo 20
    w /sys/class/fc_host/$H0/tgtid_bind_type wwpn
    w /sys/class/fc_host/$H0/tgtid_bind_type "wwpn (World Wide Port Name)"
    w /sys/class/fc_host/$H0/symbolic_name test
    w /sys/class/fc_host/$H0/statistics/reset_statistics 1
    w /sys/class/fc_host/$H0/issue_lip 1
    wait_for 40 is_attr $H0 port_state Online
    wait_for 40 has_disks $H0 3
    w /sys/class/scsi_host/$H0/scan "- - -"
    w /sys/bus/fcoe/ctlr_create veth0
    w /sys/bus/fcoe/ctlr_create nosuch0
    w /sys/bus/fcoe/ctlr_destroy nosuch0
    w /sys/bus/fcoe/ctlr_destroy veth0x
    R=$(ls -d /sys/class/fc_remote_ports/rport-${H0#host}:* | head -1)
    run grep -s . $R/port_state
    w $R/dev_loss_tmo 15 # EBUSY while the rport is Blocked
    wait_for 40 grep -q Online $R/port_state
    w $R/dev_loss_tmo 15
    w $R/fast_io_fail_tmo 20
    snap vn2vn-3-after-writes
fi

say "link down"
ip link set veth1 down
wait_for 20 is_down $H0 veth0
wait_for 20 is_down $H1 veth1
nap 2
run grep . $R/port_state /sys/class/fc_host/*/port_state
snap vn2vn-4-linkdown-blocked
stage linkdown
if quick; then # a blocked port keeps its timeout: the link has to come back for another one
    ip link set veth1 up
    wait_for 60 is_up $H0 veth0
    wait_for 60 is_up $H1 veth1
    wait_for 60 dev_loss_set $H0 5
    wait_for 60 dev_loss_set $H1 5
    ip link set veth1 down
    wait_for 60 targets_gone
else
    sleep 20
fi
run grep . /sys/class/fc_remote_ports/*/port_state /sys/class/fc_host/*/port_state
snap vn2vn-5-linkdown-devloss
stage devloss
say "link up again"
ip link set veth1 up
wait_for 60 is_attr $H0 port_state Online
wait_for 60 has_disks $H0 3
wait_for 60 is_up $H0 veth0
wait_for 60 is_up $H1 veth1
snap vn2vn-6-linkup
stage linkup
w $(ctlr veth0)/enabled 0
sleep 2
snap vn2vn-7-disabled
w $(ctlr veth0)/mode fabric
w $(ctlr veth0)/mode bogus
w /sys/bus/fcoe/ctlr_destroy veth0
w /sys/bus/fcoe/ctlr_destroy veth1
sleep 3
run ls /sys/bus/fcoe/devices /sys/class/fc_host
