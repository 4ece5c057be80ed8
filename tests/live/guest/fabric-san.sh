# Scenario fabric, the SAN: two FCoE switches (fcfsim) with one LIO target port each.
#   sw0.1002 + swta -> fabric A     sw1.1002 + swtb -> fabric B
# FIP VLAN discovery is answered on the untagged sw0 and sw1.

modprobe target_core_mod; modprobe target_core_file; modprobe tcm_fc
lio_disk 0 disk0 67108864 test-disk0
lio_disk 1 disk1 134217728 test-disk1
lio_disk 2 disk2 1073741824 test-disk2 4096
for x in a b; do
    i=$([ $x = a ] && echo 0 || echo 1)
    ip link set sw$i mtu 2500; ip link set sw$i up
    ip link add link sw$i name sw$i.1002 type vlan id 1002
    ip link set sw$i.1002 up
    ip link add tgt$x address 52:54:00:fc:20:0$i mtu 2500 type veth \
        peer name swt$x address 52:54:00:fc:21:0$i mtu 2500
    ip link set tgt$x up; ip link set swt$x up
    for n in sw$i sw$i.1002 tgt$x swt$x; do ip link set $n txqueuelen 10000; done
    TW=20:00:52:54:00:fc:20:0$i
    lio_tpg $TW 0/disk0 1/disk1 2/disk2
    lio_acl $TW 20:00:52:54:00:fc:00:01 3
    lio_acl $TW 20:00:52:54:00:fc:00:02 3
    lio_acl $TW 21:01:52:54:00:fc:00:01 2 # NPIV port of eth0
done
# fabric A has a second forwarder with a worse priority, so two fcf_N appear
ip link add link sw0.1002 name sw0b address 52:54:00:fc:01:11 type macvlan mode bridge
ip link set sw0b up
fcfsim -v -f 10000000fc00000a -w 20000000fc00000a -p 100 -i 10 -d 1 -V sw0:1002 swta sw0.1002 &
fcfsim -v -f 10000000fc00000a -w 20000000fc0000aa -p 200 -i 10 -d 2 -a sw0b &
fcfsim -v -f 10000000fc00000b -w 20000000fc00000b -p 128 -i 20 -d 1 -m 0efc01 -V sw1:1002 swtb sw1.1002 &
fcoe_create tgta; fcoe_enable tgta
fcoe_create tgtb; fcoe_enable tgtb
wait_for 30 is_attr $(host_of tgta) port_state Online
wait_for 30 is_attr $(host_of tgtb) port_state Online
say "SAN ready"
while sleep 60; do :; done
