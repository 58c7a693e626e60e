#!/usr/bin/env perl
# What a page shows of the demo is what the demo prints, line by line: each command with all that
# follows it up to the next one or an empty line. A line "..." stands for lines left out.
# usage: check_demo.pl SOURCE BUILD PAGE...
use strict;
use warnings;

my ($root, $build, @pages) = @ARGV;
my %printed;    # command => the lines behind it
my $command;
open my $demo, '-|', 'bash', "$root/scripts/demo", $build or die "scripts/demo: $!\n";
while (<$demo>) {
  chomp;
  if (/^\$ /) { $command = $_ }
  elsif (/^== /) { undef $command }
  elsif (defined $command) { push @{ $printed{$command} }, $_ }
}
close $demo or die "scripts/demo failed\n";

my ($shown, $faults) = (0, 0);
for my $page (@pages) {
  open my $in, '<', $page or die "$page: $!\n";
  my $text = do { local $/; <$in> };
  my @blocks = map { /^```\n(\$ .*)^```$/ms ? $1 : () } $text =~ /^(```.*?^```)$/msg;
  for my $block (@blocks) {
    for my $part (grep { /^\$ / } split /^(?=\$ )/m, $block) {
      my ($command, @lines) = split /\n/, $part;
      my $is = join "\n", @{ $printed{$command} // [] };
      my $told = join "\n", @lines;
      s/\n+\z// for $is, $told;
      my $form = join '\n', map { $_ eq '...' ? '(?:.*\n)*.*' : quotemeta } split /\n/, $told;
      $shown++;
      next if exists $printed{$command} && $is =~ /\A$form\z/;
      $faults++;
      print "FAULT: $page shows\n$command\n$told\n    and the demo prints\n$is\n";
    }
  }
}
print "$shown commands shown, $faults faults\n";
exit($faults > 0 || $shown < @pages);
